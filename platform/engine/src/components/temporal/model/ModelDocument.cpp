#include "components/temporal/model/ModelDocument.h"

#include <cmath>

#include "components/temporal/model/FitMembers.h"
#include "steps/Settings.h"

namespace EmbeddedHV {
namespace {

/// JSON has no infinity and no not-a-number.
Json numberOrNull(double value)
{
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

Json seriesList(const TcmModel& model)
{
    Json list = Json::array();
    for (const ModelSeries& series : model.series)
        list.push_back({{"id", series.id},
                        {"name", series.name},
                        {"target", series.isTarget},
                        {"candidate", series.isCandidate}});
    return list;
}

Json fitObject(const FitStatistics& fit)
{
    Json object = {{"observations", fit.observations},
                   {"parameters", fit.parameters},
                   {"residualSumOfSquares", fit.residualSumOfSquares}};
    for (const FitMember& member : kFitMembers)
        if (const std::optional<double>& value = fit.*member.value)
            object[member.key] = *value;
    return object;
}

Json equationObject(const TcmModel& model, const SeriesEquation& equation)
{
    Json object = {{"series", model.series[equation.series].id},
                   {"intercept", equation.intercept},
                   {"interceptStandardError", equation.interceptStandardError}};
    Json& terms = object["terms"] = Json::array();
    for (const LaggedTerm& term : equation.terms)
        terms.push_back({{"series", model.series[term.series].id},
                         {"lag", term.lag},
                         {"coefficient", term.coefficient},
                         {"standardError", term.standardError},
                         {"t", numberOrNull(term.tStatistic)},
                         {"p", term.pValue}});
    Json& groups = object["groups"] = Json::array();
    for (const PredictorGroup& group : equation.groups)
        groups.push_back({{"series", model.series[group.series].id},
                          {"f", numberOrNull(group.fStatistic)},
                          {"p", group.pValue},
                          {"forced", group.isForced}});
    object["residualVariance"] = equation.residualVariance;
    object["fit"] = fitObject(equation.fit);
    Json& residuals = object["residuals"] = Json::array();
    for (const double residual : equation.residuals)
        residuals.push_back(numberOrNull(residual));
    return object;
}

Json equationList(const TcmModel& model, const std::vector<SeriesEquation>& equations)
{
    Json list = Json::array();
    for (const SeriesEquation& equation : equations)
        list.push_back(equationObject(model, equation));
    return list;
}

Json outlierList(const TcmModel& model)
{
    Json list = Json::array();
    for (const SeriesOutlier& outlier : model.outliers)
        list.push_back({{"series", model.series[outlier.series].id},
                        {"timeIndex", outlier.timeIndex},
                        {"actual", outlier.actual},
                        {"predicted", outlier.predicted},
                        {"p", outlier.pValue}});
    return list;
}

/// A list for each series, in the order of the series.
Json lastValueList(const TcmModel& model)
{
    Json list = Json::array();
    for (Eigen::Index column = 0; column < model.lastValues.cols(); ++column) {
        Json values = Json::array();
        for (const double value : model.lastValues.col(column))
            values.push_back(numberOrNull(value));
        list.push_back(std::move(values));
    }
    return list;
}

} // namespace

std::string modelDocument(const TcmModel& model)
{
    const Json document = {{"lags", model.lags},
                           {"trainingPoints", model.trainingPoints},
                           {"outlierLevel", model.outlierLevel},
                           {"series", seriesList(model)},
                           {"equations", equationList(model, model.equations)},
                           {"autoregressions", equationList(model, model.autoregressions)},
                           {"outliers", outlierList(model)},
                           {"lastValues", lastValueList(model)}};
    // Names come from data: bytes that are not UTF-8 must not end the job.
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace EmbeddedHV
