#pragma once

#include <optional>
#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// Nothing in a place stands for no quartile: a column without values has none.
struct Quartiles
{
    std::optional<double> first;
    std::optional<double> median;
    std::optional<double> third;
};

/// The quartiles of `x`, SQL over the table's columns, whose values weigh `weight` together: those
/// of a sample in which each value stands as often as its weight says, interpolated at (W - 1) p
/// like those without a weight. Throws JobError.
Quartiles weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight);

} // namespace EmbeddedHV
