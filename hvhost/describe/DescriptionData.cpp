#include "hvhost/describe/DescriptionShown.h"

#include <array>
#include <cstdlib>
#include <ostream>
#include <sstream>
#include <utility>

#include "hvhost/base/ValueText.h"
#include "hvhost/describe/AnalysisData.h"
#include "hvhost/describe/DescriptionTables.h"
#include "hvhost/describe/FactNumbers.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;

/// Statistics by their keys in JSON, which are also the keys of the engine's document.
constexpr const char* kCounts[] = {"valid", "missing", "validWeight", "missingWeight", "distinct"};
constexpr const char* kMoments[] = {"mean",     "standardDeviation", "variance", "skewness",
                                    "kurtosis", "firstQuartile",     "median",   "thirdQuartile"};

Json jsonText(const std::optional<std::string>& text, CFField::StorageType storage)
{
    if (!text)
        return nullptr;
    return isNumber(storage) ? jsonNumber(*text) : Json(*text);
}

Json jsonValues(const FieldDescription& description)
{
    const CFField& field = description.field;
    Json list = Json::array();
    for (const CFValue& value : field.GetValues()) {
        const CFDatum& datum = value.GetDatum();
        Json entry = {{"value", datum.IsReal() && !isNumber(field.GetStorage())
                                    ? Json(numberText(datum.GetReal(), field.GetStorage()))
                                    : jsonText(value.GetText(), field.GetStorage())}};
        if (!value.GetLabel().empty())
            entry["label"] = value.GetLabel();
        if (list.size() < description.counts.size())
            putNumbers(entry, description.counts[list.size()], std::array{"count", "weight"});
        list.push_back(std::move(entry));
    }
    return list;
}

/// A value from the document of counts, in which dates and times are numbers.
std::optional<std::string> shownValue(const std::optional<std::string>& text,
                                      CFField::StorageType storage)
{
    if (!text || storage == CFField::String || isNumber(storage))
        return text;
    return numberText(std::strtod(text->c_str(), nullptr), storage);
}

/// The missing values as they are declared. A record without a value is null.
Json jsonMissing(const FieldDescription& description)
{
    const CFField& field = description.field;
    Json list = Json::array();
    for (const Facts& counts : description.missingCounts) {
        const std::optional<std::string> text = factOf(counts, "value");
        const CFField::StorageType storage = field.GetStorage();
        Json entry = {{"value", jsonText(shownValue(text, storage), storage)}};
        for (const CFValue& value : field.GetValueLabels())
            if (text && !value.GetLabel().empty() && value.GetText() == *text)
                entry["label"] = value.GetLabel();
        putNumbers(entry, counts, std::array{"count", "weight"});
        list.push_back(std::move(entry));
    }
    return list;
}

Json jsonField(const FieldDescription& description)
{
    const CFField& field = description.field;
    Json json = {{"name", field.GetName()}};
    if (!field.GetLabel().empty())
        json["label"] = field.GetLabel();
    json["storage"] = WordOf(field.GetStorage());
    json["measure"] = WordOf(field.GetType());
    putNumbers(json, description.facts, kCounts);
    for (const char* end : {"minimum", "maximum"})
        if (const auto fact = factOf(description.facts, end))
            json[end] = jsonText(fact, field.GetStorage());
    putNumbers(json, description.facts, kMoments);
    putAnalyses(json, description);
    if (description.isCategorical() && !description.isCut())
        json["values"] = jsonValues(description);
    if (!description.missingCounts.empty())
        json["missingValues"] = jsonMissing(description);
    return json;
}

Json jsonGroup(const GroupDescription& group)
{
    Json json = Json::object();
    for (const GroupKey& key : group.key) {
        Json entry = {{"variable", key.variable}, {"value", jsonText(key.value, key.storage)}};
        if (!key.label.empty())
            entry["label"] = key.label;
        json["by"].push_back(std::move(entry));
    }
    json["cases"] = jsonNumber(group.facts.at("records"));
    if (const auto weight = factOf(group.facts, "weight")) {
        json["weight"] = jsonNumber(*weight);
        json["casesLeftOut"] = group.leftOut;
    }
    json["fields"] = Json::array();
    for (const FieldDescription& field : group.fields)
        json["fields"].push_back(jsonField(field));
    if (!group.missingPatterns.empty())
        json["missingPatterns"] = jsonMissingPatterns(group);
    if (!group.pairs.empty())
        json["pairs"] = jsonPairs(group);
    if (!group.intervals.empty())
        json["timeIntervals"] = group.intervals;
    return json;
}

ResultTable tableOf(const Description& description, const GroupDescription& group)
{
    if (description.hasMissingPatterns)
        return missingPatternsTable(group);
    return description.hasPairs ? pairsTable(group) : statisticsTable(description, group);
}

/// Adds the key of the group at the beginning of each row.
void addKey(ResultTable& table, const GroupDescription& group)
{
    for (std::size_t i = 0; i < group.key.size(); ++i) {
        const auto place = static_cast<std::ptrdiff_t>(i);
        table.columns.insert(table.columns.begin() + place,
                             {group.key[i].variable, group.key[i].storage});
        for (ResultTable::Row& row : table.rows)
            row.insert(row.begin() + place, group.key[i].value);
    }
}

class CsvFigures : public DescriptionFigures
{
public:
    explicit CsvFigures(const Description& description) : _description(description) {}

    void add(const GroupDescription& group) override
    {
        ResultTable table = tableOf(_description, group);
        addKey(table, group);
        if (std::exchange(_isEmpty, false))
            printCsvNames(table.columns, _text);
        for (const ResultTable::Row& row : table.rows)
            printCsvRow(row, _text);
    }
    void print(std::ostream& out) const override
    {
        if (_isEmpty)
            printTable({}, {"csv"}, out);
        out << _text.view();
    }

private:
    const Description& _description;
    std::ostringstream _text;
    bool _isEmpty = true;
};

class JsonFigures : public DescriptionFigures
{
public:
    explicit JsonFigures(const Description& description) : _description(description) {}

    void add(const GroupDescription& group) override
    {
        constexpr const char* kIndent = "    ";
        _groups += (_groups.empty() ? "\n" : ",\n") + std::string(kIndent);
        // A text in JSON has no line end.
        for (const char letter : textOf(jsonGroup(group))) {
            _groups += letter;
            if (letter == '\n')
                _groups += kIndent;
        }
    }
    void print(std::ostream& out) const override
    {
        Json json = {{"schema", kSchema}, {"file", _description.file}};
        if (!_description.weight.empty())
            json["weight"] = _description.weight;
        if (!_description.split.empty())
            json["split"] = _description.split;
        json["mostDistinct"] = _description.mostDistinct;
        json["groups"] = Json::array();
        const std::string text = textOf(json);
        // The list of groups is the last member.
        const std::size_t end = text.rfind(']');
        out << text.substr(0, end) << _groups << (_groups.empty() ? "" : "\n  ") << text.substr(end)
            << '\n';
    }

private:
    static std::string textOf(const Json& json)
    {
        return json.dump(2, ' ', false, Json::error_handler_t::replace);
    }

    const Description& _description;
    std::string _groups;
};

} // namespace

std::unique_ptr<DescriptionFigures> makeFigures(const std::string& form,
                                                const Description& description)
{
    if (form == "json")
        return std::make_unique<JsonFigures>(description);
    return std::make_unique<CsvFigures>(description);
}
