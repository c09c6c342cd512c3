#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// The quantiles of `x`, an SQL expression over the table's columns, for `parts` from 0 to 1.
/// `weight` is the total weight W of its values. Each value counts as often as its weight says;
/// quantiles are interpolated at position (W - 1) p, as without weights. A quantile is empty if
/// there are no values. Throws JobError.
///
/// R. J. Hyndman and Y. Fan, "Sample quantiles in statistical packages", The American Statistician
/// 50, 1996, 361-365: definition 7.
std::vector<std::optional<double>> weightedQuantiles(const ComponentQueries& queries,
                                                     const InputTable& table, const std::string& x,
                                                     double weight,
                                                     const std::vector<double>& parts);

} // namespace EmbeddedHV
