#include "components/descriptives/outliers/BoxPlot.h"

#include "components/result/ChartSpecification.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr int kHeight = 60;
constexpr int kBoxHeight = 24;

Json optionalNumber(std::optional<double> value)
{
    return value ? numberJson(*value) : Json();
}

Json axisFor(const char* column, const CFField& field)
{
    return {{"field", column},
            {"type", "quantitative"},
            {"scale", {{"zero", false}}},
            {"title", chart::axisTitle(chart::titleOf(field))}};
}

Json span(const char* mark, const CFField& field, const char* from, const char* to)
{
    return {{"mark", {{"type", mark}}},
            {"encoding", {{"x", axisFor(from, field)}, {"x2", {{"field", to}}}}}};
}

Json medianLayer(const CFField& field)
{
    return {
        {"mark", {{"type", "tick"}, {"color", "white"}, {"size", kBoxHeight}, {"thickness", 2}}},
        {"encoding", {{"x", axisFor("median", field)}}}};
}

Json pointLayer(const FieldSummary& field)
{
    Json points = Json::array();
    for (const OutlyingValue& value : field.outliers->values)
        points.push_back({{"value", value.value.IsInteger() ? Json(value.value.GetInteger())
                                                            : numberJson(value.value.GetReal())},
                          {"kind", value.isExtreme ? "extreme" : "outlier"},
                          {"count", value.records}});
    return {{"data", {{"values", std::move(points)}}},
            {"mark", {{"type", "point"}}},
            {"encoding",
             {{"x", axisFor("value", field.field)},
              {"shape",
               {{"field", "kind"},
                {"type", "nominal"},
                {"scale", {{"domain", {"outlier", "extreme"}}, {"range", {"circle", "cross"}}}},
                {"legend", nullptr}}},
              {"tooltip", {{{"field", "value"}}, {{"field", "kind"}}, {{"field", "count"}}}}}}};
}

} // namespace

std::optional<Json> boxPlot(const FieldSummary& field)
{
    if (!field.outliers)
        return std::nullopt;
    const OutlierSummary& outliers = *field.outliers;
    const std::string& title = chart::titleOf(field.field);
    Json row = {{"least", optionalNumber(outliers.least)},
                {"firstQuartile", optionalNumber(outliers.firstQuartile)},
                {"median", optionalNumber(outliers.median)},
                {"thirdQuartile", optionalNumber(outliers.thirdQuartile)},
                {"greatest", optionalNumber(outliers.greatest)}};
    Json specification = chart::barSpecification(
        title,
        "Box plot of " + title + ": " + std::to_string(outliers.below.records) +
            " outliers below and " + std::to_string(outliers.above.records) + " above the bounds",
        Json::array({std::move(row)}));
    specification.erase("mark");
    specification["height"] = kHeight;
    Json box = span("bar", field.field, "firstQuartile", "thirdQuartile");
    box["mark"]["size"] = kBoxHeight;
    specification["layer"] = Json::array(
        {span("rule", field.field, "least", "greatest"), std::move(box), medianLayer(field.field)});
    if (!outliers.values.empty())
        specification["layer"].push_back(pointLayer(field));
    return specification;
}

} // namespace EmbeddedHV
