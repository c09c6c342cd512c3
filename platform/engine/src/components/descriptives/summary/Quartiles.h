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

/// The quartiles of `x`, see weightedQuantiles. Throws JobError.
Quartiles weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight);

} // namespace EmbeddedHV
