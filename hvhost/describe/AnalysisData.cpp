#include "hvhost/describe/AnalysisData.h"

#include <array>

#include "base/ListText.h"
#include "hvhost/describe/FactNumbers.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array kBounds = {
    "lowerBound", "upperBound",    "lowerExtremeBound", "upperExtremeBound", "below",
    "above",      "extremesBelow", "extremesAbove",     "weightBelow",       "weightAbove"};
constexpr std::array kPatternNumbers = {"records", "weight"};
constexpr std::array kPairTexts = {"first", "second", "measure"};
constexpr std::array kPairNumbers = {"records", "weight", "strength", "statistic",
                                     "df1",     "df2",    "p"};

Json jsonOutliers(const FieldDescription& field)
{
    Json json = Json::object();
    putNumbers(json, field.outliers, kBounds);
    json["values"] = Json::array();
    for (const Facts& value : field.outlyingValues) {
        Json entry = Json::object();
        putNumbers(entry, value, std::array{"value", "count", "weight"});
        entry["extreme"] = value.contains("extreme");
        json["values"].push_back(std::move(entry));
    }
    return json;
}

} // namespace

void putAnalyses(Json& json, const FieldDescription& field)
{
    for (const Facts& percentile : field.percentiles) {
        Json entry = Json::object();
        putNumbers(entry, percentile, std::array{"percent", "value"});
        json["percentiles"].push_back(std::move(entry));
    }
    if (!field.outliers.empty())
        json["outliers"] = jsonOutliers(field);
}

Json jsonPairs(const GroupDescription& group)
{
    Json list = Json::array();
    for (const Facts& pair : group.pairs) {
        Json entry = Json::object();
        for (const char* name : kPairTexts)
            entry[name] = pair.at(name);
        putNumbers(entry, pair, kPairNumbers);
        list.push_back(std::move(entry));
    }
    return list;
}

ResultTable pairsTable(const GroupDescription& group)
{
    ResultTable table;
    table.keyCount = 2;
    for (const char* name : kPairTexts)
        table.columns.push_back({name, CFField::String});
    for (const char* name : kPairNumbers)
        table.columns.push_back({name, CFField::Real});
    for (const Facts& pair : group.pairs) {
        ResultTable::Row& row = table.rows.emplace_back();
        for (const ResultTable::Column& column : table.columns)
            row.push_back(factOf(pair, column.name));
    }
    return table;
}

Json jsonMissingPatterns(const GroupDescription& group)
{
    Json list = Json::array();
    for (const MissingPatternDescription& pattern : group.missingPatterns) {
        Json entry = {{"missing", pattern.variables}};
        putNumbers(entry, pattern.facts, kPatternNumbers);
        list.push_back(std::move(entry));
    }
    return list;
}

ResultTable missingPatternsTable(const GroupDescription& group)
{
    ResultTable table;
    table.keyCount = 1;
    table.columns = {{"missing", CFField::String}};
    for (const char* name : kPatternNumbers)
        table.columns.push_back({name, CFField::Real});
    for (const MissingPatternDescription& pattern : group.missingPatterns) {
        ResultTable::Row& row = table.rows.emplace_back();
        row.emplace_back(base::joined(pattern.variables, ","));
        for (const char* name : kPatternNumbers)
            row.push_back(factOf(pattern.facts, name));
    }
    return table;
}
