#include "components/temporal/scoring/SeriesSystem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include <Eigen/QR>

namespace EmbeddedHV {
namespace {

/// Beyond so many series the factor of the covariance is not made square: that would take longer
/// than it saves.
constexpr Eigen::Index kMostSquareSeries = 512;
constexpr Eigen::Index kRowsAtOnce = 512;

std::vector<LagCoefficients> coefficientsOf(const std::vector<const SeriesEquation*>& equations)
{
    std::unordered_map<std::size_t, int> rows;
    for (const SeriesEquation* equation : equations)
        rows.emplace(equation->series, static_cast<int>(rows.size()));
    std::vector<std::vector<Eigen::Triplet<double>>> entries;
    for (const SeriesEquation* equation : equations)
        for (const LaggedTerm& term : equation->terms) {
            const auto lag = static_cast<std::size_t>(term.lag);
            entries.resize(std::max(entries.size(), lag));
            entries[lag - 1].emplace_back(rows.at(equation->series), rows.at(term.series),
                                          term.coefficient);
        }
    const auto size = static_cast<Eigen::Index>(equations.size());
    std::vector<LagCoefficients> coefficients(entries.size(), LagCoefficients(size, size));
    for (std::size_t lag = 0; lag < entries.size(); ++lag)
        coefficients[lag].setFromTriplets(entries[lag].begin(), entries[lag].end());
    return coefficients;
}

/// Fills a column with the residuals of an equation, scaled so that their sum of squares is the
/// residual variance. A missing residual is 0. False if all are 0.
bool fillResiduals(const SeriesEquation& equation, Eigen::MatrixXd::ColXpr column)
{
    for (std::size_t t = 0; t < equation.residuals.size(); ++t)
        if (!std::isnan(equation.residuals[t]))
            column(static_cast<Eigen::Index>(t)) = equation.residuals[t];
    const double norm = column.stableNorm();
    if (!(norm > 0))
        return false;
    column *= std::sqrt(equation.residualVariance) / norm;
    return true;
}

/// The residuals, a column an equation, whose cross product is the covariance of the innovations.
/// Since missing ones are 0, the product is always a covariance matrix: series that have few
/// points in common are little correlated. A series without residuals gets a row of its own, which
/// makes it independent of the others.
Eigen::MatrixXd scaledResiduals(const std::vector<const SeriesEquation*>& equations)
{
    std::size_t points = 0;
    for (const SeriesEquation* equation : equations)
        points = std::max(points, equation->residuals.size());
    const auto rows = static_cast<Eigen::Index>(points);
    const auto columns = static_cast<Eigen::Index>(equations.size());
    Eigen::MatrixXd scaled = Eigen::MatrixXd::Zero(rows, columns);
    for (Eigen::Index i = 0; i < columns; ++i) {
        const SeriesEquation& equation = *equations[static_cast<std::size_t>(i)];
        if (fillResiduals(equation, scaled.col(i)) || !(equation.residualVariance > 0))
            continue;
        scaled.conservativeResizeLike(Eigen::MatrixXd::Zero(scaled.rows() + 1, columns));
        scaled(scaled.rows() - 1, i) = std::sqrt(equation.residualVariance);
    }
    return scaled;
}

} // namespace

Eigen::VectorXd SeriesSystem::prediction(const Eigen::MatrixXd& values, Eigen::Index point) const
{
    Eigen::VectorXd sum = intercepts;
    for (Eigen::Index lag = 1; lag <= lags(); ++lag) {
        const LagCoefficients& matrix = coefficients[static_cast<std::size_t>(lag - 1)];
        if (lag <= point)
            sum.noalias() += matrix * values.col(point - lag);
        else
            sum.noalias() += matrix * Eigen::VectorXd::Constant(
                                          size(), std::numeric_limits<double>::quiet_NaN());
    }
    return sum;
}

Eigen::MatrixXd crossProductRoot(const Eigen::MatrixXd& tall, const StopCheck& check)
{
    const Eigen::Index columns = tall.cols();
    Eigen::MatrixXd root = Eigen::MatrixXd::Zero(columns, columns);
    for (Eigen::Index row = 0; row < tall.rows(); row += kRowsAtOnce) {
        check();
        const Eigen::Index count = std::min(kRowsAtOnce, tall.rows() - row);
        Eigen::MatrixXd stacked(columns + count, columns);
        stacked << root, tall.middleRows(row, count);
        const Eigen::HouseholderQR<Eigen::MatrixXd> qr(stacked);
        root = qr.matrixQR().topRows(columns).triangularView<Eigen::Upper>();
    }
    return root.transpose();
}

SeriesSystem systemOf(const std::vector<const SeriesEquation*>& equations, const StopCheck& check)
{
    SeriesSystem system;
    system.intercepts.resize(static_cast<Eigen::Index>(equations.size()));
    for (const SeriesEquation* equation : equations) {
        system.intercepts(static_cast<Eigen::Index>(system.places.size())) = equation->intercept;
        system.places.push_back(equation->series);
    }
    system.coefficients = coefficientsOf(equations);
    const Eigen::MatrixXd residuals = scaledResiduals(equations);
    system.innovations =
        residuals.cols() < residuals.rows() && residuals.cols() <= kMostSquareSeries
            ? crossProductRoot(residuals, check)
            : Eigen::MatrixXd(residuals.transpose());
    return system;
}

} // namespace EmbeddedHV
