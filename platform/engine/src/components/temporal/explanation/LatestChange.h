#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "components/temporal/explanation/ModelData.h"

namespace EmbeddedHV {

/// Where the latest change of a target comes from: with T the last point of time such that the
/// values at T and T - 1 are known,
///
///     y[T] - y[T-1] = the sum of contributions over the predictors + unexplained,
///     contribution of i = the sum over its lags l of b[i,l] (y[i,T-l] - y[i,T-1-l]).
///
/// What is unexplained is the change of the residual. A contribution that needs a missing value is
/// not-a-number, and so is then what is unexplained.
struct LatestChange
{
    std::int64_t timeIndex = 0; ///< T
    double change = 0;
    std::vector<double> contributions; ///< in the order of the equation's groups
    double unexplained = 0;
};

/// Nothing if no two values of the target follow each other.
std::optional<LatestChange> latestChange(const ModelData& data, const SeriesEquation& equation);

} // namespace EmbeddedHV
