#include "DescriptionShown.h"

#include <cstdint>
#include <ostream>

#include "DescriptionTables.h"
#include "Text.h"
#include "TextTable.h"
#include "ValueText.h"

namespace {

using Json = nlohmann::ordered_json;

/// As in "1,461 cases": with the word for one or for many.
std::string counted(std::int64_t count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// As in "sex = 1 (male)".
std::string keyText(const GroupKey& key)
{
    const std::string value = key.value.value_or(".");
    return key.variable + " = " + (value.empty() ? "\"\"" : value) +
           (key.label.empty() ? "" : " (" + key.label + ")");
}

void printHead(const Description& description, const GroupDescription& group, std::ostream& out)
{
    std::string line = description.file;
    for (const GroupKey& key : group.key)
        line += ", " + keyText(key);
    line += ": " + counted(std::stoll(group.facts.at("records")), "case", "cases");
    if (!description.weight.empty())
        line += ", weighted by " + description.weight + " to " + group.facts.at("weight");
    if (group.leftOut > 0)
        line += ", " + counted(group.leftOut, "case", "cases") + " without a weight left out";
    out << printable(line) << '\n';
}

void printValues(const Description& description, const GroupDescription& group, std::size_t width,
                 std::ostream& out)
{
    const ResultTable values = valuesTable(group);
    if (!values.rows.empty()) {
        out << "\nDistinct values\n";
        printTextTable(values, width, out);
    }
    for (const FieldDescription& field : group.fields)
        if (field.isCategorical() && field.isCut() && description.mostDistinct > 0)
            out << printable(field.field.GetName()) << ": more than " << description.mostDistinct
                << " distinct values, which are not listed; --distinct sets the limit\n";
}

/// A point of time: a text, or the numbers that make it up.
std::string pointText(const Json& point)
{
    if (point.is_string())
        return point.get<std::string>();
    std::string text;
    for (const auto& [name, value] : point.items())
        text += (text.empty() ? "" : ", ") + name + " " + value.dump();
    return text;
}

void printInterval(const Json& interval, std::ostream& out)
{
    std::string fields;
    for (const Json& field : interval.at("fields"))
        fields += (fields.empty() ? "" : ", ") + field.get<std::string>();
    if (interval.at("unit").is_null()) {
        out << printable(fields) << ": no interval\n";
        return;
    }
    const double increment = interval.at("increment").get<double>();
    const std::string unit = interval.at("unit").get<std::string>();
    const auto count = [&](const char* key) { return interval.at(key).get<std::int64_t>(); };
    out << printable(fields) << ": every "
        << (increment == 1 ? unit : shortestNumber(increment) + " " + unit + "s") << " from "
        << pointText(interval.at("start")) << " to " << pointText(interval.at("end")) << ", "
        << counted(count("points"), "point", "points") << ", " << count("missingPoints")
        << " of them missing; " << counted(count("duplicateRecords"), "record", "records")
        << " at the point of another, " << count("missingRecords") << " without a point\n";
}

} // namespace

void printDescriptionText(const Description& description, std::size_t width, std::ostream& out)
{
    const char* gap = "";
    for (const GroupDescription& group : description.groups) {
        out << gap;
        gap = "\n";
        printHead(description, group, out);
        printTextTable(statisticsTable(description, group, TableFor::People), width, out);
        printValues(description, group, width, out);
        if (!group.intervals.empty())
            out << "\nTime interval\n";
        for (const Json& interval : group.intervals)
            printInterval(interval, out);
    }
}
