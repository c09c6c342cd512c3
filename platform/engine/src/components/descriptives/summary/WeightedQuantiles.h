#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Quantiles, one for each requested part. A quantile is empty if there are no values.
using Quantiles = std::vector<std::optional<double>>;

/// The quantiles of `x`, an SQL expression over the table's columns, for `parts` from 0 to 1 in
/// ascending order. `weight` is the total weight W of its values. Each value counts as often as its
/// weight says; quantiles are interpolated at position (W - 1) p, as without weights. Throws
/// JobError.
///
/// R. J. Hyndman and Y. Fan, "Sample quantiles in statistical packages", The American Statistician
/// 50, 1996, 361-365: definition 7.
Quantiles weightedQuantiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight, const std::vector<double>& parts);

/// The quantiles of each group; otherwise as the overload for one group. `weights` has the total
/// weight of each group's values. Throws JobError.
std::vector<Quantiles> weightedQuantiles(const ComponentQueries& queries, const InputTable& table,
                                         const std::string& x, const std::vector<double>& weights,
                                         const std::vector<double>& parts);

/// The first quartile, the median and the third quartile of each group, see weightedQuantiles.
/// Throws JobError.
std::vector<Quantiles> weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                                         const std::string& x, const std::vector<double>& weights);

} // namespace EmbeddedHV
