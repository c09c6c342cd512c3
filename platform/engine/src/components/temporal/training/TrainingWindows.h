#pragma once

#include <vector>

#include "components/temporal/training/ScaledSeries.h"
#include "components/temporal/training/TrainingOptions.h"

namespace EmbeddedHV {

/// Targets whose predictors are selected on the same points of time.
struct TrainingWindow
{
    TimeRange range;
    std::vector<std::size_t> targets; ///< places of series
    std::vector<std::size_t> members; ///< the targets first, then other series with values there
};

/// The most lags that a window of so many points allows: an equation has at least two observations
/// for each parameter. Not negative.
int mostLags(Eigen::Index points);
/// The fewest points that allow so many lags.
constexpr Eigen::Index leastPoints(int lags)
{
    // Observations are the points less L, parameters of the own past L + 1.
    return 3 * Eigen::Index{lags} + 2;
}

/// The windows of the targets. Series that lack at most a tenth of the points at their ends share
/// one window, the first of the list: the points that all of them have. A target that lacks more
/// has a window of its own points. A series is a predictor in the windows that it has values in
/// from end to end.
std::vector<TrainingWindow> trainingWindows(const ScaledSeries& series,
                                            const TrainingOptions& options);

} // namespace EmbeddedHV
