#include "hvhost/describe/GroupTables.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <numeric>

#include "hvhost/base/ValueText.h"
#include "hvhost/show/DocumentItems.h"

namespace {

using Json = nlohmann::ordered_json;

/// More values do not fit into the columns of a page.
constexpr std::size_t kMostValues = 12;
constexpr int kMostDecimals = 8;

struct Statistic
{
    const char* title;
    const char* fact;
    bool isCount = false;
};
constexpr Statistic kStatistics[] = {
    {"Valid", "valid", true}, {"Missing", "missing", true},
    {"Mean", "mean"},         {"Std. Deviation", "standardDeviation"},
    {"Minimum", "minimum"},   {"Median", "median"},
    {"Maximum", "maximum"}};

/// With a weight, the sums of weights.
std::optional<double> countOf(const GroupsCompared& groups, std::size_t group, std::size_t field,
                              const std::string& fact)
{
    const auto weight = groups.number(group, field, (fact + "Weight").c_str());
    return weight ? weight : groups.number(group, field, fact.c_str());
}

/// The decimals that show four digits of the largest deviation; more than whole numbers need.
int decimalsOf(const GroupsCompared& groups, std::size_t field)
{
    double largest = 0;
    for (std::size_t group = 0; group < groups.size(); ++group)
        largest = std::max(largest, groups.number(group, field, "standardDeviation").value_or(0));
    if (!(largest > 0) || !std::isfinite(largest))
        return 2;
    return static_cast<int>(
        std::clamp(3 - std::floor(std::log10(largest)), 0.0, static_cast<double>(kMostDecimals)));
}

Json table(const std::string& id, Json dimensions, Json formats, Json values)
{
    return {{"tableId", id},
            {"title", Json::object()},
            {"dimensions", std::move(dimensions)},
            {"formats", std::move(formats)},
            {"cells", {{{"cells", {{"compactCells", {{"value", std::move(values)}}}}}}}}};
}

Json orNull(std::optional<double> number)
{
    return number && std::isfinite(*number) ? Json(*number) : Json();
}

Json groupRows(const GroupsCompared& groups, int position)
{
    Json rows = dimensionItem("Groups", "row", false);
    rows["position"] = position;
    for (const std::string& name : groups.names)
        rows["children"].push_back(plainItem(name));
    return rows;
}

void addFieldFormats(Json& formats, const GroupsCompared& groups, std::size_t field,
                     const std::string& row)
{
    const Json own = {{"decimals", decimalsOf(groups, field)}};
    for (std::size_t at = 0; at < std::size(kStatistics); ++at)
        if (!kStatistics[at].isCount)
            formats.push_back({{"index", row + cellDigits(at, 1)}, {"format", own}});
}

/// The values of a text that occur, in the order of the first group that has them.
std::optional<ComparedTexts> textsOf(const GroupsCompared& groups, std::size_t field)
{
    ComparedTexts texts{field, {}, {}};
    std::map<std::string, std::size_t> places;
    for (std::size_t group = 0; group < groups.size(); ++group) {
        const FieldDescription& described = groups.at(group, field);
        const auto& values = described.field.GetValues();
        std::vector<double>& counts = texts.counts.emplace_back(texts.values.size());
        for (std::size_t at = 0; at < std::min(values.size(), described.counts.size()); ++at) {
            const CFValue& value = values[at];
            const auto [place, isNew] = places.try_emplace(value.GetText(), texts.values.size());
            if (isNew)
                texts.values.push_back({value.GetText(), value.GetLabel().empty()
                                                             ? value.GetText()
                                                             : value.GetLabel()});
            if (texts.values.size() > kMostValues)
                return std::nullopt;
            counts.resize(texts.values.size());
            const auto weight = factOf(described.counts[at], "weight");
            counts[place->second] = std::strtod(
                weight.value_or(factOf(described.counts[at], "count").value_or("0")).c_str(),
                nullptr);
        }
    }
    for (std::vector<double>& counts : texts.counts)
        counts.resize(texts.values.size());
    return texts.values.empty() ? std::nullopt : std::optional(texts);
}

} // namespace

std::string GroupsCompared::titleOf(std::size_t field) const
{
    const CFField& described = at(0, field).field;
    return described.GetLabel().empty() ? described.GetName() : described.GetLabel();
}

std::optional<double> GroupsCompared::number(std::size_t group, std::size_t field,
                                             const char* fact) const
{
    const auto text = factOf(at(group, field).facts, fact);
    return text ? std::optional(std::strtod(text->c_str(), nullptr)) : std::nullopt;
}

std::optional<double> ComparedTexts::percent(std::size_t group, std::size_t value) const
{
    const double sum = std::accumulate(counts[group].begin(), counts[group].end(), 0.0);
    return sum > 0 ? std::optional(100 * counts[group][value] / sum) : std::nullopt;
}

std::vector<std::size_t> numberFields(const GroupsCompared& groups)
{
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < groups.fields.front().size(); ++field) {
        const CFField& described = groups.at(0, field).field;
        if (isNumber(described.GetStorage()) && !groups.at(0, field).isCategorical())
            fields.push_back(field);
    }
    return fields;
}

std::vector<ComparedTexts> comparedTexts(const GroupsCompared& groups)
{
    std::vector<ComparedTexts> all;
    for (std::size_t field = 0; field < groups.fields.front().size(); ++field)
        if (groups.at(0, field).field.GetStorage() == CFField::String)
            if (std::optional<ComparedTexts> texts = textsOf(groups, field))
                all.push_back(std::move(*texts));
    return all;
}

Json numbersTable(const GroupsCompared& groups, const std::vector<std::size_t>& fields)
{
    Json rows = dimensionItem("Fields", "row", false);
    Json columns = dimensionItem("Statistics", "column", true);
    const std::size_t digits = cellDigitsFor(fields.size());
    const std::string anyGroup(cellDigitsFor(groups.size()), '*');
    Json formats = Json::array();
    for (std::size_t at = 0; at < std::size(kStatistics); ++at) {
        columns["children"].push_back(textItem(kStatistics[at].title));
        if (kStatistics[at].isCount)
            formats.push_back({{"index", std::string(digits, '*') + anyGroup + cellDigits(at, 1)},
                               {"format", {{"decimals", 0}}}});
    }
    Json values = Json::array();
    for (std::size_t row = 0; row < fields.size(); ++row) {
        rows["children"].push_back(plainItem(groups.titleOf(fields[row])));
        addFieldFormats(formats, groups, fields[row], cellDigits(row, digits) + anyGroup);
        for (std::size_t group = 0; group < groups.size(); ++group)
            for (const Statistic& statistic : kStatistics)
                values.push_back(orNull(statistic.isCount
                                            ? countOf(groups, group, fields[row], statistic.fact)
                                            : groups.number(group, fields[row], statistic.fact)));
    }
    rows["position"] = 1;
    return table("comparison.numbers", {std::move(rows), groupRows(groups, 2), std::move(columns)},
                 std::move(formats), std::move(values));
}

Json sharesTable(const GroupsCompared& groups, const ComparedTexts& texts)
{
    Json columns = dimensionItem("Values", "column", true);
    for (const ComparedTexts::Value& value : texts.values)
        columns["children"].push_back(plainItem(value.label));
    columns["children"].push_back(textItem("Valid"));
    const std::string anyGroup(cellDigitsFor(groups.size()), '*');
    Json formats = Json::array();
    for (std::size_t at = 0; at <= texts.values.size(); ++at) {
        const bool isCount = at == texts.values.size();
        Json format = {{"decimals", isCount ? 0 : 1}};
        if (!isCount)
            format["suffix"] = "%";
        formats.push_back({{"index", anyGroup + cellDigits(at, 1)}, {"format", format}});
    }
    Json values = Json::array();
    for (std::size_t group = 0; group < groups.size(); ++group) {
        for (std::size_t at = 0; at < texts.values.size(); ++at)
            values.push_back(orNull(texts.percent(group, at)));
        values.push_back(orNull(countOf(groups, group, texts.field, "valid")));
    }
    return table("comparison.shares", {groupRows(groups, 1), std::move(columns)},
                 std::move(formats), std::move(values));
}
