#include "steps/UserMissing.h"

#include <algorithm>

#include "expression/FieldTypes.h"
#include "expression/FunctionCall.h"

namespace EmbeddedHV {
namespace {

bool isNumber(const CFDatum& datum)
{
    return datum.IsReal() || datum.IsInteger();
}

std::string numberOf(const Dialect& dialect, const CFDatum& datum)
{
    return datum.IsInteger() ? dialect.literal(datum.GetInteger())
                             : dialect.literal(datum.GetReal());
}

/// The condition that a value is declared missing; empty if no value is.
std::string missingCondition(const Dialect& dialect, const std::string& column,
                             const CFField& field)
{
    const CFMissingValues& missing = field.GetMissingValues();
    const bool isText = field.GetStorage() == CFField::String;
    // Ignore trailing blanks: the host pads its texts with blanks.
    const std::string value = isText
                                  ? functionSql(dialect, "rtrim", "String", {column})
                                  : dialect.onModelScale(column, valueTypeOf(field.GetStorage()));
    std::vector<std::string> conditions;
    for (const CFValue& single : missing.GetValues()) {
        const CFDatum& datum = single.GetDatum();
        // A value of another type than the field's never occurs in a record.
        if (isText && datum.IsString()) {
            const std::string& text = datum.GetString();
            conditions.push_back(value + " = " +
                                 dialect.literal(text.substr(0, text.find_last_not_of(' ') + 1)));
        } else if (!isText && isNumber(datum)) {
            conditions.push_back(value + " = " + numberOf(dialect, datum));
        }
    }
    const CFRange& range = missing.GetRange();
    if (!isText && (isNumber(range.GetLower()) || isNumber(range.GetUpper()))) {
        std::string inside = "(";
        if (isNumber(range.GetLower()))
            inside += value + " >= " + numberOf(dialect, range.GetLower());
        if (isNumber(range.GetLower()) && isNumber(range.GetUpper()))
            inside += " AND ";
        if (isNumber(range.GetUpper()))
            inside += value + " <= " + numberOf(dialect, range.GetUpper());
        conditions.push_back(inside + ")");
    }
    std::string all;
    for (const std::string& condition : conditions)
        all += (all.empty() ? "" : " OR ") + condition;
    return all;
}

} // namespace

bool anyUserMissing(const Dialect& dialect, const datafile::Fields& fields)
{
    return std::any_of(fields.begin(), fields.end(), [&](const CFField& field) {
        return !missingCondition(dialect, "x", field).empty();
    });
}

std::string selectList(const Dialect& dialect, const datafile::Fields& fields,
                       const std::vector<std::string>& columns)
{
    std::string list;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string name = dialect.name(fields[i].GetName());
        const std::string condition = missingCondition(dialect, columns[i], fields[i]);
        const std::string column =
            condition.empty() ? columns[i]
                              : "CASE WHEN " + condition + " THEN NULL ELSE " + columns[i] + " END";
        list += (i == 0 ? "" : ", ") + column + (column == name ? "" : " AS " + name);
    }
    return list;
}

} // namespace EmbeddedHV
