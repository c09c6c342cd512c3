#include "hvhost/tcm/TcmCharts.h"

#include <cstdlib>

#include "VexaCases.h"
#include "base/NumberText.h"
#include "hvhost/show/ResultWords.h"

namespace {

using TcmJson = nlohmann::ordered_json;

TcmJson tooltip(std::initializer_list<const char*> fields)
{
    TcmJson list = TcmJson::array();
    for (const char* field : fields)
        list.push_back({{"field", word(field)}});
    return list;
}

/// Names the columns of the data beside a drawing in the host's language.
TcmJson namedInWords(const TcmJson& records)
{
    TcmJson list = TcmJson::array();
    for (const TcmJson& record : records) {
        TcmJson& shown = list.emplace_back(TcmJson::object());
        for (const auto& [key, value] : record.items())
            shown[word(key)] = value;
    }
    return list;
}

/// Rounds a number for the table beside the drawing. The table of equations has all digits.
TcmJson sixDigits(double value)
{
    return std::strtod(base::roundedNumber(value).c_str(), nullptr);
}

TcmJson networkOf(const std::string& description, const char* layout, const TcmJson& nodes,
                  const TcmJson& edges)
{
    return {{"description", description},
            {"mark", {{"type", "network"}, {"layout", layout}}},
            {"datasets", {{"nodes", nodes}}},
            {"data", {{"values", namedInWords(edges)}}},
            {"encoding",
             {{"source", {{"field", word("Predictor")}}},
              {"target", {{"field", word("Target")}}},
              {"strength", {{"field", word("Strength")}}},
              {"sign", {{"field", word("Effect")}}},
              {"tooltip", tooltip({"Lag", "Effect", "p"})}}}};
}

bool isCategory(const HVSeriesForecast& forecast)
{
    return forecast.timeFields.size() != 1 ||
           (forecast.timeFields.front().GetStorage() != CFField::Date &&
            forecast.timeFields.front().GetStorage() != CFField::Timestamp);
}

TcmJson valueOrNull(double value)
{
    return value == kSystemMissing ? TcmJson(nullptr) : TcmJson(value);
}

TcmJson lineOf(const char* field, const char* name, const TcmJson& x)
{
    return {
        {"mark", {{"type", "line"}, {"point", {{"size", 14}}}}},
        {"encoding",
         {{"x", x},
          {"y", {{"field", word(field)}, {"type", "quantitative"}, {"scale", {{"zero", false}}}}},
          {"color", {{"datum", word(name)}}}}}};
}

} // namespace

nlohmann::ordered_json networkChart(const TcmModelFacts& facts)
{
    TcmJson nodes = TcmJson::array();
    for (const TcmModelFacts::Series& series : facts.series)
        nodes.push_back({{"name", seriesText(series.name)},
                         {"kind", series.isTarget ? "target" : "predictor"}});
    TcmJson edges = TcmJson::array();
    for (const TcmModelFacts::Edge& edge : facts.edges)
        if (!edge.isOwnPast())
            edges.push_back({{"Predictor", seriesText(edge.predictor)},
                             {"Target", seriesText(edge.target)},
                             {"Lag", edge.lag},
                             {"Effect", sixDigits(edge.coefficientSum)},
                             {"p", sixDigits(edge.pValue)},
                             {"Strength", sixDigits(edge.strength())}});
    return networkOf(
        word("Which series drives which: an arrow leads from a predictor to its target."), "force",
        nodes, edges);
}

nlohmann::ordered_json impactChart(const std::string& series, const std::vector<ImpactShown>& nodes,
                                   nlohmann::ordered_json edges)
{
    for (TcmJson& edge : edges)
        for (TcmJson& value : edge)
            if (value.is_number_float())
                value = sixDigits(value.get<double>());
    TcmJson list = TcmJson::array();
    for (const ImpactShown& node : nodes)
        list.push_back({{"name", node.name},
                        {"level", node.level},
                        {"kind", node.name == series ? "focus" : "other"}});
    return networkOf(sentence("Causes of ^1 are to its left, effects to its right.", {series}),
                     "levels", list, edges);
}

nlohmann::ordered_json forecastChart(const std::string& series, const HVSeriesForecast& forecast,
                                     const std::vector<std::string>& times)
{
    TcmJson values = TcmJson::array();
    for (std::size_t at = 0; at < times.size(); ++at) {
        const HVSeriesPoint& point = forecast.points[at];
        values.push_back({{"time", times[at]},
                          {"actual", valueOrNull(point.actual)},
                          {"predicted", valueOrNull(point.predicted)},
                          {"lower", valueOrNull(point.lower)},
                          {"upper", valueOrNull(point.upper)}});
    }
    TcmJson x{{"field", word("time")}, {"title", word("Time")}};
    if (isCategory(forecast)) {
        x["type"] = "ordinal";
        x["sort"] = nullptr;
    } else {
        x["type"] = "temporal";
    }
    const TcmJson bounds{{"mark", {{"type", "area"}, {"opacity", 0.2}}},
                         {"encoding",
                          {{"x", x},
                           {"y",
                            {{"field", word("lower")},
                             {"type", "quantitative"},
                             {"title", series},
                             {"scale", {{"zero", false}}}}},
                           {"y2", {{"field", word("upper")}}}}}};
    return {
        {"$schema", "https://vega.github.io/schema/vega-lite/v5.json"},
        {"description",
         sentence("Values of ^1, as they were and as the model predicts them", {series})},
        {"width", 640},
        {"data", {{"values", namedInWords(values)}}},
        {"layer", {bounds, lineOf("predicted", "Predicted", x), lineOf("actual", "Actual", x)}}};
}
