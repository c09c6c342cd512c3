#include "datafile/FieldDictionary.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "datafile/FieldMetadata.h"

namespace datafile {
namespace {

struct Measure
{
    CFField::FieldType type;
    DictionaryLevel level;
    bool isLevel; ///< the level says it all
};

constexpr Measure kMeasures[] = {
    {CFField::Continuous, DictionaryLevel::Scale, true},
    {CFField::Nominal, DictionaryLevel::Nominal, true},
    {CFField::Ordinal, DictionaryLevel::Ordinal, true},
    {CFField::Flag, DictionaryLevel::Nominal, false},
    {CFField::Discrete, DictionaryLevel::Nominal, false},
    {CFField::Typeless, DictionaryLevel::Unknown, false},
};

constexpr std::pair<CFField::RoleType, DictionaryRole> kRoles[] = {
    {CFField::Input, DictionaryRole::Input},         {CFField::Target, DictionaryRole::Target},
    {CFField::Both, DictionaryRole::Both},           {CFField::None, DictionaryRole::None},
    {CFField::Partition, DictionaryRole::Partition}, {CFField::RecordId, DictionaryRole::RecordId},
};

/// Null for a datum that a dictionary cannot hold.
std::optional<DictionaryValue> valueOf(const CFDatum& datum)
{
    if (datum.IsString())
        return datum.GetString();
    if (datum.IsInteger())
        return static_cast<double>(datum.GetInteger());
    if (datum.IsReal() && std::isfinite(datum.GetReal()))
        return datum.GetReal();
    return std::nullopt;
}

CFDatum datumOf(const DictionaryValue& value, CFField::StorageType storage)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return CFDatum(*text);
    return numberAs(CFDatum(std::get<double>(value)), storage);
}

std::optional<double> endOf(const CFDatum& limit)
{
    const auto value = valueOf(limit);
    return value && std::holds_alternative<double>(*value) ? std::optional(std::get<double>(*value))
                                                           : std::nullopt;
}

/// All of it, be it more than a dictionary has room for.
DictionaryMissing missingOf(const CFField& field)
{
    const CFMissingValues& missing = field.GetMissingValues();
    DictionaryMissing result;
    result.hasRange = !missing.GetRange().IsEmpty();
    if (result.hasRange) {
        result.from = endOf(missing.GetRange().GetLower());
        result.to = endOf(missing.GetRange().GetUpper());
    }
    for (const CFValue& value : missing.GetValues())
        if (const auto known = valueOf(value.GetDatum()))
            result.values.push_back(*known);
    return result;
}

std::size_t roomFor(const DictionaryMissing& missing)
{
    return missing.hasRange ? 1 : kMostMissingValues;
}

DictionaryVariable variableOf(const CFField& field)
{
    DictionaryVariable variable;
    variable.name = field.GetName();
    variable.label = field.GetLabel();
    variable.isText = field.GetStorage() == CFField::String;
    for (const Measure& measure : kMeasures)
        if (measure.type == field.GetType()) {
            variable.level = measure.level;
            if (!measure.isLevel)
                variable.measure = WordOf(field.GetType());
        }
    for (const auto& [role, word] : kRoles)
        if (role == field.GetRole())
            variable.role = word;
    if (const CFFormat* format = field.GetPrivateFormat())
        variable.print = {format->GetType(), format->GetWidth(), format->GetDecimals()};
    for (const CFValue& value : field.GetValueLabels())
        if (const auto known = valueOf(value.GetDatum()))
            variable.valueLabels.emplace_back(*known, value.GetLabel());
    variable.missing = missingOf(field);
    // Texts have no order that a range could lie in.
    if (variable.isText)
        variable.missing.hasRange = false;
    std::vector<DictionaryValue>& missing = variable.missing.values;
    missing.resize(std::min(missing.size(), roomFor(variable.missing)));
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
    for (const auto& [role, word] : kRoles)
        if (word == variable.role)
            return role;
    return CFField::Input;
}

/// As data models have it, a missing value carries the label that the value has.
CFMissingValues missingOf(const DictionaryMissing& missing, const CFField& field)
{
    if (missing.empty())
        return {};
    const CFField::StorageType storage = field.GetStorage();
    const std::vector<CFValue>& labels = field.GetValueLabels();
    CFRange range;
    if (missing.hasRange)
        range = CFRange(missing.from ? datumOf(*missing.from, storage) : CFDatum(),
                        missing.to ? datumOf(*missing.to, storage) : CFDatum());
    std::vector<CFValue> values;
    for (const DictionaryValue& value : missing.values) {
        const CFDatum datum = datumOf(value, storage);
        const int label = CFValue::GetIndex(datum, labels);
        values.emplace_back(datum, label < 0 ? std::string()
                                             : labels[static_cast<std::size_t>(label)].GetLabel());
    }
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
    field.SetMissingValues(missingOf(variable.missing, field));
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
        if (field.GetRole() == CFField::FrequencyWeight && dictionary.weight.empty() &&
            field.GetStorage() != CFField::String)
            dictionary.weight = field.GetName();
        if (field.GetRole() == CFField::Split)
            dictionary.split.push_back(field.GetName());
    }
    return dictionary;
}

bool holdsMissingOf(const CFField& field)
{
    const DictionaryMissing missing = missingOf(field);
    return missing.values.size() <= roomFor(missing) &&
           !(missing.hasRange && field.GetStorage() == CFField::String);
}

void adoptDictionary(Fields& fields, const Dictionary& dictionary)
{
    for (CFField& field : fields)
        for (const DictionaryVariable& variable : dictionary.variables)
            if (variable.name == field.GetName() &&
                variable.isText == (field.GetStorage() == CFField::String))
                adopt(field, variable, dictionary);
}

} // namespace datafile
