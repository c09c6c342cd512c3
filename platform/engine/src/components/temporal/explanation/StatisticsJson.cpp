#include "components/temporal/explanation/StatisticsJson.h"

#include "components/result/ValueFormat.h"
#include "components/temporal/model/FitMembers.h"

namespace EmbeddedHV::statistics {

Json seriesObject(const Explanation& explanation, std::size_t place)
{
    return {{"id", explanation.series(place).id}, {"name", explanation.nameOf(place)}};
}

Json optionalNumber(const std::optional<double>& value)
{
    return value ? numberJson(*value) : Json();
}

Json effectObject(const CausalEdge& edge)
{
    return {{"lag", edge.lag},
            {"sum", numberJson(edge.sum)},
            {"sign", edge.sign()},
            {"strength", numberJson(edge.strength)},
            {"fStatistic", numberJson(edge.fStatistic)},
            {"pValue", numberJson(edge.pValue)}};
}

Json edgeObject(const Explanation& explanation, const CausalEdge& edge)
{
    Json object = {{"from", explanation.series(edge.from).id},
                   {"to", explanation.series(edge.to).id}};
    object.update(effectObject(edge));
    return object;
}

Json nodeObject(const Explanation& explanation, std::size_t place)
{
    Json node = seriesObject(explanation, place);
    const SeriesEquation* equation = explanation.model().equationOf(place);
    node["isTarget"] = equation != nullptr;
    node["rSquared"] = equation ? optionalNumber(equation->fit.rSquared) : Json();
    if (const CausalEdge* own = explanation.network().ownPastOf(place))
        node["ownPast"] = effectObject(*own);
    return node;
}

void addNetwork(ArtifactText& text, const Explanation& explanation)
{
    text.startList("nodes");
    for (std::size_t place = 0; place < explanation.model().series.size(); ++place) {
        explanation.check();
        text.addElement(nodeObject(explanation, place));
    }
    text.endList();
    text.startList("edges");
    for (const CausalEdge& edge : explanation.network().edges()) {
        explanation.check();
        text.addElement(edgeObject(explanation, edge));
    }
    text.endList();
}

void addFit(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request)
{
    text.startList("targets");
    for (const SeriesEquation* equation : explanation.equationsOf(request.targets)) {
        explanation.check();
        Json target = seriesObject(explanation, equation->series);
        target["observations"] = equation->fit.observations;
        target["parameters"] = equation->fit.parameters;
        for (const FitMember& member : kFitMembers)
            target[member.key] = optionalNumber(equation->fit.*member.value);
        text.addElement(target);
    }
    text.endList();
}

namespace {

Json termObject(const Explanation& explanation, const LaggedTerm& term)
{
    return {{"id", explanation.series(term.series).id},
            {"lag", term.lag},
            {"coefficient", numberJson(term.coefficient)},
            {"standardError", numberJson(term.standardError)},
            {"tStatistic", numberJson(term.tStatistic)},
            {"pValue", numberJson(term.pValue)}};
}

Json equationObject(const Explanation& explanation, const SeriesEquation& equation)
{
    Json object = seriesObject(explanation, equation.series);
    object["intercept"] = numberJson(equation.intercept);
    object["interceptStandardError"] = numberJson(equation.interceptStandardError);
    object["residualVariance"] = numberJson(equation.residualVariance);
    object["predictors"] = Json::array();
    for (const PredictorGroup& group : equation.groups) {
        Json predictor = seriesObject(explanation, group.series);
        predictor["fStatistic"] = numberJson(group.fStatistic);
        predictor["pValue"] = numberJson(group.pValue);
        predictor["isForced"] = group.isForced;
        object["predictors"].push_back(std::move(predictor));
    }
    object["terms"] = Json::array();
    for (const LaggedTerm& term : equation.terms)
        object["terms"].push_back(termObject(explanation, term));
    return object;
}

} // namespace

void addEquations(ArtifactText& text, const Explanation& explanation,
                  const ArtifactRequest& request)
{
    text.startList("equations");
    for (const SeriesEquation* equation : explanation.equationsOf(request.targets)) {
        explanation.check();
        text.addElement(equationObject(explanation, *equation));
    }
    text.endList();
}

} // namespace EmbeddedHV::statistics
