#include "datafile/FieldDictionary.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "datafile/ColumnTypes.h"
#include "datafile/FieldMetadata.h"

namespace datafile {
namespace {

struct Measure
{
    CFField::FieldType type;
    DictionaryLevel level;
    bool isLevel; ///< the level is sufficient
};

constexpr Measure kMeasures[] = {
    {CFField::Continuous, DictionaryLevel::Scale, true},
    {CFField::Nominal, DictionaryLevel::Nominal, true},
    {CFField::Ordinal, DictionaryLevel::Ordinal, true},
    {CFField::Flag, DictionaryLevel::Nominal, false},
    {CFField::Discrete, DictionaryLevel::Nominal, false},
    {CFField::Typeless, DictionaryLevel::Unknown, false},
};

constexpr std::pair<CFField::RoleType, DictionaryRole> kRolesOfFields[] = {
    {CFField::Input, DictionaryRole::Input},         {CFField::Target, DictionaryRole::Target},
    {CFField::Both, DictionaryRole::Both},           {CFField::None, DictionaryRole::None},
    {CFField::Partition, DictionaryRole::Partition}, {CFField::RecordId, DictionaryRole::RecordId},
};

/// The column contains texts, also if the storage is unknown.
bool isText(const CFField& field)
{
    return columnTypeOf(field.GetStorage()) == DUCKDB_TYPE_VARCHAR;
}

/// Null for a datum that a dictionary cannot hold: the nearest double of a large integer is another
/// value, which would get its description.
std::optional<DictionaryValue> valueOf(const CFDatum& datum, bool isText)
{
    if (isText)
        return datum.IsString() ? std::optional<DictionaryValue>(datum.GetString()) : std::nullopt;
    const CFDatum number = numberAs(datum, CFField::Real);
    if (number.IsReal() && std::isfinite(number.GetReal()))
        return number.GetReal();
    return std::nullopt;
}

CFDatum datumOf(const DictionaryValue& value, CFField::StorageType storage)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return CFDatum(*text);
    return numberAs(CFDatum(std::get<double>(value)), storage);
}

bool isNumber(const CFDatum& datum)
{
    return datum.IsInteger() || datum.IsReal();
}

/// No limit for an infinity. A limit between two doubles is rounded.
std::optional<double> endOf(const CFDatum& limit)
{
    if (limit.IsInteger())
        return static_cast<double>(limit.GetInteger());
    return limit.IsReal() && std::isfinite(limit.GetReal()) ? std::optional(limit.GetReal())
                                                            : std::nullopt;
}

/// All missing values of the field's kind, even more than a dictionary can hold.
DictionaryMissing missingOf(const CFField& field)
{
    const CFMissingValues& missing = field.GetMissingValues();
    const CFRange& range = missing.GetRange();
    DictionaryMissing result;
    result.hasRange = !isText(field) && (isNumber(range.GetLower()) || isNumber(range.GetUpper()));
    if (result.hasRange) {
        result.from = endOf(range.GetLower());
        result.to = endOf(range.GetUpper());
    }
    for (const CFValue& value : missing.GetValues())
        if (const auto known = valueOf(value.GetDatum(), isText(field)))
            result.values.push_back(*known);
    return result;
}

DictionaryVariable variableOf(const CFField& field)
{
    DictionaryVariable variable;
    variable.name = field.GetName();
    variable.label = field.GetLabel();
    variable.isText = isText(field);
    for (const Measure& measure : kMeasures)
        if (measure.type == field.GetType()) {
            variable.level = measure.level;
            if (!measure.isLevel)
                variable.measure = WordOf(field.GetType());
        }
    for (const auto& [role, word] : kRolesOfFields)
        if (role == field.GetRole())
            variable.role = word;
    if (const CFFormat* format = field.GetPrivateFormat())
        variable.print = {format->GetType(), format->GetWidth(), format->GetDecimals()};
    for (const CFValue& value : field.GetValueLabels())
        if (const auto known = valueOf(value.GetDatum(), variable.isText))
            variable.valueLabels.emplace_back(*known, value.GetLabel());
    variable.missing = missingOf(field);
    if (variable.missing.values.size() > variable.missing.mostValues())
        variable.missing.values.resize(variable.missing.mostValues());
    return variable;
}

CFField::FieldType typeOf(const DictionaryVariable& variable, CFField::FieldType unknown)
{
    for (const Measure& measure : kMeasures)
        if (variable.measure.empty() ? measure.isLevel && measure.level == variable.level
                                     : variable.measure == WordOf(measure.type))
            return measure.type;
    return unknown;
}

CFField::RoleType roleOf(const DictionaryVariable& variable, const Dictionary& dictionary)
{
    if (variable.name == dictionary.weight)
        return CFField::FrequencyWeight;
    if (std::find(dictionary.split.begin(), dictionary.split.end(), variable.name) !=
        dictionary.split.end())
        return CFField::Split;
    for (const auto& [role, word] : kRolesOfFields)
        if (word == variable.role)
            return role;
    return CFField::Input;
}

CFMissingValues missingOf(const DictionaryMissing& missing, CFField::StorageType storage)
{
    if (missing.empty())
        return {};
    CFRange range;
    if (missing.hasRange)
        range = CFRange(missing.from ? datumOf(*missing.from, storage) : CFDatum(),
                        missing.to ? datumOf(*missing.to, storage) : CFDatum());
    // Here a range without limits contains no values, but in a dictionary it contains all.
    if (missing.hasRange && range.IsEmpty())
        range = CFRange(CFDatum(std::numeric_limits<double>::lowest()), CFDatum());
    std::vector<CFValue> values;
    for (const DictionaryValue& value : missing.values)
        values.emplace_back(datumOf(value, storage));
    return {range, std::move(values), true, false};
}

void adopt(CFField& field, const DictionaryVariable& variable, const Dictionary& dictionary)
{
    field.SetType(typeOf(variable, field.GetType()));
    field.SetRole(roleOf(variable, dictionary));
    field.SetLabel(variable.label);
    std::vector<CFValue> labels;
    for (const auto& [value, label] : variable.valueLabels)
        labels.emplace_back(datumOf(value, field.GetStorage()), label);
    field.SetValueLabels(std::move(labels));
    field.SetMissingValues(missingOf(variable.missing, field.GetStorage()));
    if (variable.print.type != 0)
        field.SetPrivateFormat(
            CFFormat(variable.print.type, variable.print.width, variable.print.decimals));
}

} // namespace

Dictionary dictionaryOfFields(const Fields& fields)
{
    Dictionary dictionary;
    for (const CFField& field : fields) {
        dictionary.variables.push_back(variableOf(field));
        // A file has at most one weight, which is numeric.
        if (field.GetRole() == CFField::FrequencyWeight && dictionary.weight.empty() &&
            !isText(field))
            dictionary.weight = field.GetName();
        if (field.GetRole() == CFField::Split)
            dictionary.split.push_back(field.GetName());
    }
    return dictionary;
}

bool holdsMissingValues(const CFField& field)
{
    const DictionaryMissing missing = missingOf(field);
    return missing.values.size() <= missing.mostValues();
}

void adoptDictionary(Fields& fields, const Dictionary& dictionary)
{
    std::unordered_map<std::string_view, const DictionaryVariable*> variables;
    for (const DictionaryVariable& variable : dictionary.variables)
        variables.emplace(variable.name, &variable);
    for (CFField& field : fields)
        if (const auto found = variables.find(field.GetName());
            found != variables.end() && found->second->isText == isText(field))
            adopt(field, *found->second, dictionary);
}

} // namespace datafile
