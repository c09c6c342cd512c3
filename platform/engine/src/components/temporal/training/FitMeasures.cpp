#include "components/temporal/training/FitMeasures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "components/statistics/Distributions.h"

namespace EmbeddedHV {
namespace {

using Values = Eigen::Ref<const Eigen::VectorXd>;

/// Lags of the residuals that the Ljung-Box test takes beyond those of the equation, and the most
/// that a short series allows. Hyndman, Athanasopoulos, "Forecasting: principles and practice",
/// section 5.4.
constexpr int kTestedLags = 10;
constexpr Eigen::Index kPointsPerTestedLag = 5;

/// RMSPE = sqrt(mean((e / y)^2)), as a part, not in percent; absent if an actual value is 0.
std::optional<double> percentageError(const Values& actual, const Values& residuals)
{
    if ((actual.array() == 0).any())
        return std::nullopt;
    return std::sqrt((residuals.array() / actual.array()).square().mean());
}

/// -2 log L = n (log(2 pi) + log(RSS / n) + 1) of normal errors; AIC adds 2 k, BIC k log n, where k
/// counts the coefficients with the intercept but not the variance. Burnham, Anderson, "Model
/// selection and multimodel inference", 2nd ed., section 2.2, 6.4.
void addCriteria(FitStatistics& fit)
{
    const auto rows = static_cast<double>(fit.observations);
    const double deviance =
        rows * (std::log(2 * std::numbers::pi) + std::log(fit.residualSumOfSquares / rows) + 1);
    fit.aic = deviance + 2 * fit.parameters;
    fit.bic = deviance + std::log(rows) * fit.parameters;
}

/// Q = n (n + 2) sum over k = 1..h of r_k^2 / (n - k), with r_k the autocorrelation of the
/// residuals, is chi-squared with h less the own lags degrees of freedom. Ljung, Box, "On a measure
/// of lack of fit in time series models", 1978.
void addLjungBox(FitStatistics& fit, const Values& residuals, int ownLags)
{
    const Eigen::Index rows = residuals.size();
    const Eigen::Index tested =
        std::min(Eigen::Index{kTestedLags + ownLags}, rows / kPointsPerTestedLag);
    if (tested <= ownLags)
        return;
    const Eigen::VectorXd centred = residuals.array() - residuals.mean();
    const double squares = centred.squaredNorm();
    double sum = 0;
    for (Eigen::Index lag = 1; lag <= tested; ++lag) {
        const double correlation = centred.tail(rows - lag).dot(centred.head(rows - lag)) / squares;
        sum += correlation * correlation / static_cast<double>(rows - lag);
    }
    const auto count = static_cast<double>(rows);
    fit.ljungBox = count * (count + 2) * sum;
    fit.ljungBoxPValue = upperChiSquared(*fit.ljungBox, static_cast<double>(tested - ownLags));
}

/// DW = sum of (e_t - e_(t-1))^2 / sum of e_t^2. Durbin, Watson, "Testing for serial correlation in
/// least squares regression I", 1950.
double durbinWatson(const Values& residuals)
{
    const Eigen::Index steps = residuals.size() - 1;
    return (residuals.tail(steps) - residuals.head(steps)).squaredNorm() / residuals.squaredNorm();
}

/// R2 = 1 - RSS / TSS with the target's deviations from its mean in TSS; the adjusted one divides
/// each sum by its degrees of freedom, n - k and n - 1. Greene, "Econometric analysis", section
/// 3.5.
void addDetermination(FitStatistics& fit, const Values& actual)
{
    const double total = (actual.array() - actual.mean()).square().sum();
    const auto degrees = static_cast<double>(fit.observations - fit.parameters);
    if (!(total > 0))
        return;
    fit.rSquared = 1 - fit.residualSumOfSquares / total;
    if (degrees > 0)
        fit.adjustedRSquared =
            1 - (1 - *fit.rSquared) * static_cast<double>(fit.observations - 1) / degrees;
}

} // namespace

FitStatistics fitStatistics(const Values& actual, const Values& residuals, int parameters,
                            int ownLags, bool isPerfect)
{
    FitStatistics fit;
    fit.observations = actual.size();
    fit.parameters = parameters;
    fit.residualSumOfSquares = residuals.squaredNorm();
    fit.rmse = std::sqrt(residuals.squaredNorm() / static_cast<double>(actual.size()));
    fit.mae = residuals.cwiseAbs().mean();
    fit.rmspe = percentageError(actual, residuals);
    addDetermination(fit, actual);
    if (isPerfect || fit.residualSumOfSquares == 0)
        return fit;
    addCriteria(fit);
    fit.durbinWatson = durbinWatson(residuals);
    addLjungBox(fit, residuals, ownLags);
    return fit;
}

} // namespace EmbeddedHV
