#pragma once

#include <Eigen/Core>

#include "components/temporal/base/ProgressSink.h"
#include "components/temporal/scoring/SeriesPath.h"
#include "components/temporal/scoring/SeriesSystem.h"

namespace EmbeddedHV {

/// The variances of the errors of predictions of the first `count` series, a column each point of
/// the path: those of the system's moving-average form. An innovation acts on all series at all
/// later points, through every value that is itself a prediction; values that are known or set by a
/// scenario have no error. Throws what `check` throws.
Eigen::MatrixXd predictionErrorVariances(const SeriesPath& path, const SeriesSystem& system,
                                         Eigen::Index count, const StopCheck& check,
                                         const ProgressSink& progress);

} // namespace EmbeddedHV
