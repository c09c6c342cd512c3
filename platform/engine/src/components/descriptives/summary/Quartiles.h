#pragma once

#include <optional>
#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Empty quartiles: the column has no values.
struct Quartiles
{
    std::optional<double> first;
    std::optional<double> median;
    std::optional<double> third;
};

/// The quartiles of `x`, an SQL expression over the table's columns. `weight` is the total weight W
/// of its values. Each value counts as often as its weight says; quartiles are interpolated at
/// position (W - 1) p, as without weights. Throws JobError.
///
/// R. J. Hyndman and Y. Fan, "Sample quantiles in statistical packages", The American Statistician
/// 50, 1996, 361-365: definition 7.
Quartiles weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight);

} // namespace EmbeddedHV
