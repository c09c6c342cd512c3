#include "components/temporal/explanation/ExplanationResults.h"

#include <algorithm>

#include "components/result/FieldModel.h"
#include "components/result/TextItem.h"
#include "components/temporal/explanation/ExplanationCharts.h"
#include "components/temporal/explanation/ExplanationTables.h"
#include "components/temporal/explanation/SeriesCharts.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kResultName = "temporalCausalModel";

/// The series that requests name, each once, in their order.
std::vector<std::size_t> seriesAskedFor(const std::vector<ArtifactRequest>& requests)
{
    std::vector<std::size_t> asked;
    for (const ArtifactRequest& request : requests)
        for (const std::size_t target : request.targets)
            if (std::find(asked.begin(), asked.end(), target) == asked.end())
                asked.push_back(target);
    return asked;
}

/// The result object as it grows.
class ExplanationObject
{
public:
    explicit ExplanationObject(const Explanation& explanation) : _explanation(explanation) {}

    void addModel()
    {
        add("fit", explanation::fitTable(_explanation));
        add("network", explanation::edgeTable(_explanation));
        if (!_explanation.network().edges().empty())
            _object["network"]["chart"] = explanation::networkChart(_explanation);
        add("outliers", explanation::outlierTable(_explanation));
    }

    /// `number` counts the series asked for, from 1.
    void addImpact(const ArtifactRequest& request, std::size_t target, std::size_t number)
    {
        const bool isEffects = request.kind == ArtifactKind::ImpactEffects;
        const ImpactDiagram diagram =
            impactDiagram(_explanation.network(), target, request.level,
                          isEffects ? ImpactDirection::Effects : ImpactDirection::Causes,
                          [this] { _explanation.check(); });
        if (diagram.edges.empty()) {
            notify(target, isEffects ? " influences no other series."
                                     : " is influenced by no other series.");
            return;
        }
        const char* const kind = isEffects ? "effects" : "causes";
        const std::string key = "s" + std::to_string(number);
        Json& place = _object[kind][key];
        place["table"] =
            *explanation::impactTable(_explanation, diagram, std::string(kind) + "." + key);
        place["chart"] = explanation::impactChart(_explanation, diagram);
    }

    void addSeries(std::size_t target, std::size_t number)
    {
        if (_explanation.data()->has(target))
            _object["series"]["s" + std::to_string(number)] =
                explanation::seriesChart(_explanation, target);
        else
            notify(target, " has no values in the data.");
    }

    void addForecast(const Scores& scores, const SeriesScores& series, std::size_t number)
    {
        _object["forecast"]["s" + std::to_string(number)] =
            explanation::forecastChart(_explanation, scores, series);
    }

    void addRemark(const std::string& remark)
    {
        Json text = text::plain(remark);
        text["severity"] = "Warning";
        _notifications.push_back(std::move(text));
    }

    Json json() const
    {
        Json result = {{"notifications", _notifications}};
        result.update(_object);
        return result;
    }

private:
    void add(const char* key, std::optional<Json> table)
    {
        if (table)
            _object[key]["table"] = std::move(*table);
    }

    void notify(std::size_t target, const char* what)
    {
        Json text = text::composite({text::plain(_explanation.textOf(target)), text::fixed(what)});
        text["severity"] = "Comment";
        _notifications.push_back(std::move(text));
    }

    const Explanation& _explanation;
    Json _notifications = Json::array();
    Json _object = Json::object();
};

template <class NumberOf>
void addForecasts(ExplanationObject& object, const Explanation& explanation,
                  const ArtifactRequest& request, NumberOf numberOf)
{
    const Scores scores = explanation.scoresOf(explanation::scoringRequest(request));
    for (const FaultParts& remark : scores.remarks)
        object.addRemark(sentenceOf(remark));
    for (const SeriesScores& series : scores.series)
        object.addForecast(scores, series, numberOf(series.series));
}

} // namespace

std::string explanationResults(const Explanation& explanation,
                               const std::vector<ArtifactRequest>& requests)
{
    ExplanationObject object(explanation);
    object.addModel();
    const std::vector<std::size_t> asked = seriesAskedFor(requests);
    const auto numberOf = [&](std::size_t series) {
        return static_cast<std::size_t>(std::find(asked.begin(), asked.end(), series) -
                                        asked.begin()) +
               1;
    };
    for (const ArtifactRequest& request : requests) {
        if (request.kind == ArtifactKind::ImpactEffects ||
            request.kind == ArtifactKind::ImpactCauses)
            for (const std::size_t target : request.targets)
                object.addImpact(request, target, numberOf(target));
        if (request.kind == ArtifactKind::Forecast)
            addForecasts(object, explanation, request, numberOf);
    }
    for (std::size_t i = 0; explanation.data() && i < asked.size(); ++i)
        object.addSeries(asked[i], i + 1);
    explanation.check();
    const Json document = {{"dataModel", fieldModel(kResultName, {})},
                           {kResultName, object.json()}};
    // Names and texts can contain invalid UTF-8.
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace EmbeddedHV
