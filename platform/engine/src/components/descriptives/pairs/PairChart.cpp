#include "components/descriptives/pairs/PairChart.h"

#include <set>

#include "components/result/ChartSpecification.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostFieldsOfChart = 60;
constexpr int kCellSize = 24;

const char* shortName(PairMeasure measure)
{
    switch (measure) {
    case PairMeasure::Correlation:
        return "r";
    case PairMeasure::Eta:
        return "eta";
    default:
        return "V";
    }
}

/// Both axes have the order of the fields.
Json axisOf(const char* column, const Json& names)
{
    return {{"field", column}, {"type", "nominal"}, {"sort", names}, {"title", nullptr}};
}

Json cellsOf(const DataSummary& summary, bool mirrored)
{
    Json rows = Json::array();
    const auto add = [&](std::size_t column, std::size_t row, const PairStatistic& pair) {
        if (pair.association.strength)
            rows.push_back({{"first", summary.fields[column].field.GetName()},
                            {"second", summary.fields[row].field.GetName()},
                            {"measure", shortName(pair.measure)},
                            {"strength", numberJson(*pair.association.strength)},
                            {"p", numberJson(pair.association.p.value_or(0))}});
    };
    for (const PairStatistic& pair : summary.pairs) {
        add(pair.first, pair.second, pair);
        if (mirrored)
            add(pair.second, pair.first, pair);
    }
    return rows;
}

} // namespace

std::optional<Json> pairChart(const DataSummary& summary, const PairRule& rule)
{
    std::set<std::size_t> fields;
    for (const PairStatistic& pair : summary.pairs) {
        fields.insert(pair.first);
        fields.insert(pair.second);
    }
    if (fields.empty() || fields.size() > kMostFieldsOfChart)
        return std::nullopt;
    Json cells = cellsOf(summary, rule.all);
    if (cells.empty())
        return std::nullopt;
    Json names = Json::array();
    for (const std::size_t field : fields)
        names.push_back(summary.fields[field].field.GetName());
    Json specification = chart::barSpecification(
        "Strength of Pairs",
        "Heat map of " + std::to_string(summary.pairs.size()) +
            " pairs: Pearson's r of two numbers, eta of a number and a category, Cramer's V of "
            "two categories",
        std::move(cells));
    specification["mark"] = {{"type", "rect"}};
    specification["width"] = {{"step", kCellSize}};
    specification["height"] = {{"step", kCellSize}};
    specification["encoding"] = {{"x", axisOf("first", names)},
                                 {"y", axisOf("second", names)},
                                 {"color",
                                  {{"field", "strength"},
                                   {"type", "quantitative"},
                                   {"title", "Strength"},
                                   {"scale", {{"domain", {-1, 1}}, {"scheme", "redblue"}}}}},
                                 {"tooltip", Json::array({{{"field", "first"}},
                                                          {{"field", "second"}},
                                                          {{"field", "measure"}},
                                                          {{"field", "strength"}},
                                                          {{"field", "p"}}})}};
    return specification;
}

} // namespace EmbeddedHV
