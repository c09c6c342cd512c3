#include "components/temporal/scoring/Scoring.h"

#include <cmath>
#include <limits>

#include "components/statistics/Distributions.h"
#include "components/temporal/scoring/EquationRefit.h"
#include "components/temporal/scoring/PredictionErrors.h"
#include "components/temporal/scoring/Scenario.h"
#include "components/temporal/scoring/SeriesPath.h"
#include "components/temporal/scoring/SeriesSystem.h"

namespace EmbeddedHV {
namespace {

/// For the progress: how far the work is after each part. The errors take longest.
constexpr double kRefitted = 0.1;
constexpr double kPredicted = 0.3;

/// Series of which the records have no value at all are continued from the training data.
std::vector<FaultParts> remarksOn(const TcmModel& model, const SeriesSystem& system,
                                  const SeriesPath& path, const SeriesTable& table,
                                  const std::string& component)
{
    std::vector<FaultParts> remarks;
    for (std::size_t i = 0; i < system.places.size(); ++i) {
        if (table.values.col(path.columns[i]).array().isFinite().any())
            continue;
        const std::string name = shownName(model.series[system.places[i]]);
        remarks.push_back(
            {.step = component,
             .series = model.series[system.places[i]].name,
             .what =
                 "the records have no value of the series " + name +
                 (path.lastKnown[i] >= 0 ? "; it goes on from the end of the training data" : "")});
    }
    return remarks;
}

/// The values of the records; missing beyond them.
Eigen::VectorXd actualValues(const SeriesTable& table, Eigen::Index column, Eigen::Index points)
{
    Eigen::VectorXd actual =
        Eigen::VectorXd::Constant(points, std::numeric_limits<double>::quiet_NaN());
    actual.head(table.values.rows()) = table.values.col(column);
    return actual;
}

/// Sets predictions and their bounds where they are finite.
void setPredictions(SeriesScores& scores, const Eigen::VectorXd& predicted,
                    const Eigen::VectorXd& variance, double quantile)
{
    const Eigen::VectorXd missing =
        Eigen::VectorXd::Constant(predicted.size(), std::numeric_limits<double>::quiet_NaN());
    scores.predicted = scores.lower = scores.upper = missing;
    for (Eigen::Index i = 0; i < predicted.size(); ++i) {
        if (!std::isfinite(predicted(i)))
            continue;
        scores.predicted(i) = predicted(i);
        const double distance = quantile * std::sqrt(variance(i));
        if (!std::isfinite(distance))
            continue;
        scores.lower(i) = predicted(i) - distance;
        scores.upper(i) = predicted(i) + distance;
    }
}

/// The predictions of the series asked for, a row each, a column each point of the path.
Eigen::MatrixXd predictionsOf(const SeriesPath& path, const SeriesSystem& system,
                              Eigen::Index count, bool fits, const StopCheck& check)
{
    Eigen::MatrixXd predicted = path.values.topRows(count);
    if (fits)
        predicted.leftCols(path.end) = oneStepAhead(path, system, count, check);
    else
        predicted.leftCols(path.end).setConstant(std::numeric_limits<double>::quiet_NaN());
    return predicted;
}

} // namespace

Scores score(const TcmModel& model, const SeriesTable& table, const ScoringRequest& request,
             const std::string& component, const StopCheck& check, const ProgressSink& progress)
{
    std::vector<const SeriesEquation*> equations =
        ancestorEquations(model, request.series, request.by, component);
    std::vector<SeriesEquation> refitted;
    if (request.refits) {
        refitted = refittedEquations(model, equations, table, component, check);
        for (std::size_t i = 0; i < equations.size(); ++i)
            equations[i] = &refitted[i];
    }
    progress(kRefitted);
    const SeriesSystem system = systemOf(equations, check);
    SeriesPath path = pathOf(model, system, table, request.span, component, check);
    Scores scores{table.firstIndex,
                  table.values.rows(),
                  {},
                  remarksOn(model, system, path, table, component)};
    predictAhead(path, system, check);
    if (!request.scenario.empty()) {
        setScenario(path, system, model, request, component, scores.remarks);
        predictAhead(path, system, check);
    }
    const auto count = static_cast<Eigen::Index>(request.series.size());
    const Eigen::MatrixXd predicted = predictionsOf(path, system, count, request.fits, check);
    progress(kPredicted);
    const Eigen::MatrixXd variance =
        predictionErrorVariances(path, system, count, check, partOf(progress, kPredicted, 1));
    const double quantile = twoSidedNormalBound(request.confidenceLevel);
    const Eigen::Index shown = path.values.cols() - path.firstRecord;
    for (Eigen::Index row = 0; row < count; ++row) {
        SeriesScores result;
        result.series = request.series[static_cast<std::size_t>(row)];
        result.actual = actualValues(table, path.columns[static_cast<std::size_t>(row)], shown);
        setPredictions(result, predicted.row(row).tail(shown), variance.row(row).tail(shown),
                       quantile);
        scores.series.push_back(std::move(result));
    }
    return scores;
}

} // namespace EmbeddedHV
