#pragma once

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "components/temporal/scoring/Scoring.h"

namespace ScoringTest {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// An equation with terms (series, lag, coefficient).
inline EmbeddedHV::SeriesEquation
equation(std::size_t series, double intercept,
         const std::vector<std::tuple<std::size_t, int, double>>& terms, double variance,
         std::vector<double> residuals = {})
{
    EmbeddedHV::SeriesEquation made;
    made.series = series;
    made.intercept = intercept;
    for (const auto& [from, lag, coefficient] : terms) {
        EmbeddedHV::LaggedTerm term;
        term.series = from;
        term.lag = lag;
        term.coefficient = coefficient;
        made.terms.push_back(term);
        if (made.groups.empty() || made.groups.back().series != from)
            made.groups.push_back({from, 1, 0.5, false});
    }
    made.residualVariance = variance;
    made.residuals = std::move(residuals);
    return made;
}

/// A model of two series, which was trained on three points:
///   x[t] = 1 + 0.5 x[t-1]                               (its own past)
///   y[t] = 2 + 0.4 y[t-1] + 3 x[t-1] - x[t-2]           (a target)
/// Series 0 is "1", x; series 1 is "2", y. The residuals have the variances 0.25 and 4 and the
/// correlation 0.5.
inline EmbeddedHV::TcmModel twoSeries()
{
    EmbeddedHV::TcmModel model;
    model.lags = 2;
    model.trainingPoints = 3;
    model.series = {{"1", {"x"}, false, true}, {"2", {"y"}, true, true}};
    model.autoregressions = {equation(0, 1, {{0, 1, 0.5}}, 0.25, {kNone, 1, 1}),
                             equation(1, 4, {{1, 1, 0.5}}, 9, {kNone, 1, 2})};
    const double side = std::sqrt(3.0);
    model.equations = {
        equation(1, 2, {{1, 1, 0.4}, {0, 1, 3}, {0, 2, -1}}, 4, {kNone, 1 - side, 1 + side})};
    model.lastValues = (Eigen::MatrixXd(2, 2) << 2, 20, 6, 30).finished();
    return model;
}

/// The values that the model was trained on.
inline EmbeddedHV::SeriesTable twoSeriesData()
{
    return {0, {"1", "2"}, (Eigen::MatrixXd(3, 2) << 4, 10, 2, 20, 6, 30).finished()};
}

} // namespace ScoringTest
