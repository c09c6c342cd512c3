#pragma once

#include <Eigen/Core>

#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// Statistics of a least-squares fit with an intercept. `actual` are the values of the target,
/// `residuals` what the fit leaves of them, one after the other in time. `parameters` counts the
/// coefficients and the intercept, `ownLags` the lags of the target among them. Statistics that
/// divide by the residuals are absent if `isPerfect`.
FitStatistics fitStatistics(const Eigen::Ref<const Eigen::VectorXd>& actual,
                            const Eigen::Ref<const Eigen::VectorXd>& residuals, int parameters,
                            int ownLags, bool isPerfect);

} // namespace EmbeddedHV
