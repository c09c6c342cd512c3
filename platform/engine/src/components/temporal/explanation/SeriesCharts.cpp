#include "components/temporal/explanation/SeriesCharts.h"

#include "components/result/ChartSpecification.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV::explanation {
namespace {

/// The label as a chart reads it.
std::string chartTime(const Explanation& explanation, std::int64_t index)
{
    constexpr std::size_t kTimeAt = 10; ///< after a date
    std::string label = explanation.labels().text(index);
    if (explanation.labels().areMoments() && label.size() > kTimeAt) {
        label[kTimeAt] = 'T';
        label += 'Z';
    }
    return label;
}

Json timeAxis(const Explanation& explanation)
{
    Json axis = {{"field", "time"}, {"title", "Time"}};
    if (explanation.labels().areMoments()) {
        axis["type"] = "temporal";
        axis["scale"] = {{"type", "utc"}};
    } else {
        axis["type"] = "ordinal";
        axis["sort"] = nullptr;
    }
    return axis;
}

Json valueAxis(const char* field, const std::string& title)
{
    return {{"field", field},
            {"type", "quantitative"},
            {"title", chart::axisTitle(title)},
            {"scale", {{"zero", false}}}};
}

class SeriesChart
{
public:
    SeriesChart(const Explanation& explanation, std::size_t place)
        : _x(timeAxis(explanation)), _title(explanation.textOf(place))
    {
    }

    void addLine(const char* field, const char* name)
    {
        _layers.push_back(
            {{"mark", {{"type", "line"}}},
             {"encoding",
              {{"x", _x}, {"y", valueAxis(field, _title)}, {"color", {{"datum", name}}}}}});
    }
    void addBounds()
    {
        _layers.push_back(
            {{"mark", {{"type", "area"}, {"opacity", 0.2}}},
             {"encoding",
              {{"x", _x}, {"y", valueAxis("lower", _title)}, {"y2", {{"field", "upper"}}}}}});
    }
    Json json(const std::string& description, Json rows) const
    {
        Json specification =
            chart::barSpecification(_title, description + _title + " by time", std::move(rows));
        specification.erase("mark");
        specification["layer"] = _layers;
        return specification;
    }

private:
    Json _x;
    std::string _title;
    Json _layers = Json::array();
};

Json fittedRows(const Explanation& explanation, std::size_t place)
{
    const ModelData& data = *explanation.data();
    const SeriesEquation* equation = systemEquation(explanation.model(), place);
    const auto predictions = equation ? data.predictions(*equation) : std::vector<double>();
    Json rows = Json::array();
    for (std::int64_t index = data.firstIndex(); index < data.endIndex(); ++index) {
        explanation.check();
        Json row = {{"time", chartTime(explanation, index)},
                    {"actual", numberJson(data.value(place, index))}};
        if (equation)
            row["predicted"] =
                numberJson(predictions[static_cast<std::size_t>(index - data.firstIndex())]);
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

Json seriesChart(const Explanation& explanation, std::size_t place)
{
    SeriesChart chart(explanation, place);
    if (systemEquation(explanation.model(), place))
        chart.addLine("predicted", "Predicted");
    chart.addLine("actual", "Actual");
    return chart.json("Actual and predicted values of ", fittedRows(explanation, place));
}

Json forecastChart(const Explanation& explanation, const Scores& scores, const SeriesScores& series)
{
    SeriesChart chart(explanation, series.series);
    chart.addBounds();
    chart.addLine("predicted", "Predicted");
    chart.addLine("actual", "Actual");
    Json rows = Json::array();
    for (Eigen::Index point = 0; point < series.predicted.size(); ++point) {
        explanation.check();
        rows.push_back({{"time", chartTime(explanation, scores.firstIndex + point)},
                        {"actual", numberJson(series.actual(point))},
                        {"predicted", numberJson(series.predicted(point))},
                        {"lower", numberJson(series.lower(point))},
                        {"upper", numberJson(series.upper(point))}});
    }
    return chart.json("Values and forecast of ", std::move(rows));
}

ScoringRequest scoringRequest(const ArtifactRequest& request)
{
    ScoringRequest scoring;
    scoring.series = request.targets;
    scoring.span = request.span;
    scoring.confidenceLevel = request.confidenceLevel;
    return scoring;
}

} // namespace EmbeddedHV::explanation
