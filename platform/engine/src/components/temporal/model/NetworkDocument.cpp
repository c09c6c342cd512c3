#include "components/temporal/model/NetworkDocument.h"

#include <cmath>

#include "steps/Settings.h"

namespace EmbeddedHV {
namespace {

Json edgeObject(const TcmModel& model, const NetworkEdge& edge)
{
    const ModelSeries& predictor = model.series[edge.predictor];
    const int sign = (edge.coefficientSum > 0) - (edge.coefficientSum < 0);
    return {{"series", predictor.id},
            {"name", predictor.name},
            {"lag", edge.strongestLag},
            {"coefficientSum", edge.coefficientSum},
            {"sign", sign},
            {"f", std::isfinite(edge.fStatistic) ? Json(edge.fStatistic) : Json(nullptr)},
            {"p", edge.pValue}};
}

} // namespace

std::vector<NetworkEdge> edgesOf(const SeriesEquation& equation)
{
    std::vector<NetworkEdge> edges;
    for (const PredictorGroup& group : equation.groups) {
        NetworkEdge edge{group.series, 1, 0, group.fStatistic, group.pValue};
        double largest = -1;
        for (const LaggedTerm& term : equation.terms) {
            if (term.series != group.series)
                continue;
            edge.coefficientSum += term.coefficient;
            if (std::abs(term.coefficient) > largest) {
                largest = std::abs(term.coefficient);
                edge.strongestLag = term.lag;
            }
        }
        edges.push_back(edge);
    }
    return edges;
}

std::string networkDocument(const TcmModel& model)
{
    Json targets = Json::array();
    for (const SeriesEquation& equation : model.equations) {
        Json predictors = Json::array();
        for (const NetworkEdge& edge : edgesOf(equation))
            predictors.push_back(edgeObject(model, edge));
        const ModelSeries& target = model.series[equation.series];
        targets.push_back(
            {{"series", target.id}, {"name", target.name}, {"predictors", std::move(predictors)}});
    }
    const Json document = {{"targets", std::move(targets)}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace EmbeddedHV
