#include "hvhost/describe/GroupCharts.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "FacSTDictionary.h"
#include "hvhost/describe/GroupTables.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr int kRowHeight = 18;

/// The columns of a chart's data, in the host's language.
struct Words
{
    FacSTDictionary strings;
    std::string group = strings.LookUp("Groups");
    std::string minimum = strings.LookUp("Minimum");
    std::string first = strings.LookUp("First");
    std::string median = strings.LookUp("Median");
    std::string third = strings.LookUp("Third");
    std::string maximum = strings.LookUp("Maximum");
    std::string value = strings.LookUp("Value");
    std::string percent = strings.LookUp("Percent");
    std::string from = strings.LookUp("From");
    std::string to = strings.LookUp("To");
    std::string frequency = strings.LookUp("Frequency");
    std::string density = strings.LookUp("Density");
};

Json chart(const std::string& title, const std::string& description, Json rows)
{
    return {{"$schema", "https://vega.github.io/schema/vega-lite/v5.json"},
            {"title", title},
            {"description", description},
            {"height", {{"step", kRowHeight}}},
            {"data", {{"values", std::move(rows)}}}};
}

Json groupAxis(const Words& words)
{
    return {{"field", words.group}, {"type", "nominal"}, {"sort", nullptr}, {"title", nullptr}};
}

Json layer(Json mark, Json encoding)
{
    return {{"mark", std::move(mark)}, {"encoding", std::move(encoding)}};
}

} // namespace

Json boxChart(const GroupsCompared& groups, std::size_t field)
{
    const Words words;
    const std::pair<const std::string&, const char*> columns[] = {{words.minimum, "minimum"},
                                                                  {words.first, "firstQuartile"},
                                                                  {words.median, "median"},
                                                                  {words.third, "thirdQuartile"},
                                                                  {words.maximum, "maximum"}};
    Json rows = Json::array();
    for (std::size_t group = 0; group < groups.size(); ++group) {
        Json row = {{words.group, groups.names[group]}};
        for (const auto& [name, fact] : columns) {
            const std::optional<double> number = groups.number(group, field, fact);
            row[name] = number && std::isfinite(*number) ? Json(*number) : Json();
        }
        rows.push_back(std::move(row));
    }
    const std::string title = groups.titleOf(field);
    Json specification =
        chart(title, words.strings.LookUp("Quartiles and range of each group."), std::move(rows));
    const auto at = [&](const std::string& name) {
        return Json{{"field", name},
                    {"type", "quantitative"},
                    {"title", title},
                    {"scale", {{"zero", false}}}};
    };
    specification["encoding"] = {{"y", groupAxis(words)}};
    specification["layer"] = {
        layer({{"type", "rule"}}, {{"x", at(words.minimum)}, {"x2", {{"field", words.maximum}}}}),
        layer({{"type", "bar"}, {"height", {{"band", 0.7}}}},
              {{"x", at(words.first)}, {"x2", {{"field", words.third}}}}),
        layer({{"type", "tick"}, {"thickness", 2}, {"color", "currentColor"}},
              {{"x", at(words.median)}})};
    return specification;
}

Json histogramsChart(const GroupsCompared& groups, std::size_t field)
{
    const Words words;
    Json rows = Json::array();
    for (std::size_t group = 0; group < groups.size(); ++group) {
        const std::vector<ComparedBin>& bins = groups.histograms[group][field];
        double all = 0;
        for (const ComparedBin& bin : bins)
            all += bin.count;
        // The bins of groups differ in width, so the area of a bar is its part of the group.
        for (const ComparedBin& bin : bins)
            rows.push_back({{words.group, groups.names[group]},
                            {words.from, bin.from},
                            {words.to, bin.to},
                            {words.frequency, bin.count},
                            {words.density, bin.count / all / (bin.to - bin.from)}});
    }
    Json specification = chart(groups.titleOf(field),
                               words.strings.LookUp("Histogram of each group."), std::move(rows));
    specification.erase("height");
    specification["facet"] = {{"row", groupAxis(words)}};
    specification["facet"]["row"]["header"] = {
        {"labelAngle", 0}, {"labelAlign", "left"}, {"labelOrient", "top"}, {"labelPadding", 2}};
    specification["spacing"] = 6;
    specification["spec"] = {
        {"width", 480},
        {"height", 48},
        {"mark", {{"type", "bar"}, {"orient", "vertical"}}},
        {"encoding",
         {{"x",
           {{"field", words.from},
            {"type", "quantitative"},
            {"bin", "binned"},
            {"title", groups.titleOf(field)},
            {"axis", {{"format", ",.10~g"}}}}},
          {"x2", {{"field", words.to}}},
          {"y", {{"field", words.density}, {"type", "quantitative"}, {"axis", nullptr}}}}}};
    return specification;
}

Json sharesChart(const GroupsCompared& groups, const ComparedTexts& texts)
{
    const Words words;
    Json rows = Json::array();
    for (std::size_t group = 0; group < groups.size(); ++group)
        for (std::size_t value = 0; value < texts.values.size(); ++value)
            if (const std::optional<double> percent = texts.percent(group, value))
                rows.push_back({{words.group, groups.names[group]},
                                {words.value, texts.values[value].label},
                                {words.percent, *percent}});
    Json order = Json::array();
    for (const ComparedTexts::Value& value : texts.values)
        order.push_back(value.label);
    Json specification =
        chart(groups.titleOf(texts.field),
              words.strings.LookUp("Percent of the valid values of each group."), std::move(rows));
    specification["mark"] = {{"type", "bar"}};
    specification["encoding"] = {
        {"y", groupAxis(words)},
        {"x",
         {{"field", words.percent}, {"type", "quantitative"}, {"scale", {{"domain", {0, 100}}}}}},
        {"color",
         {{"field", words.value},
          {"type", "nominal"},
          {"title", nullptr},
          {"scale", {{"domain", std::move(order)}}},
          {"legend", {{"orient", "top"}, {"columns", 4}}}}}};
    return specification;
}
