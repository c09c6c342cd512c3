#include "datafile/FieldMetadata.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "datafile/ColumnTypes.h"

namespace datafile {
namespace {

bool isNumber(CFField::StorageType storage)
{
    return storage == CFField::Integer || storage == CFField::Real;
}

/// Whether descriptions of one storage's values apply to the other's.
bool areComparable(CFField::StorageType one, CFField::StorageType other)
{
    return one == other || (isNumber(one) && isNumber(other));
}

std::vector<CFValue> numbersAs(std::vector<CFValue> values, CFField::StorageType storage)
{
    for (CFValue& value : values)
        value = CFValue(numberAs(value.GetDatum(), storage), value.GetLabel(), value.GetProperty(),
                        value.GetOrder());
    return values;
}

} // namespace

CFField plainField(const std::string& name, CFField::StorageType storage)
{
    return {name, defaultMeasure(storage), storage};
}

bool isWhole(double number)
{
    constexpr double kTwoTo63 = 9223372036854775808.0;
    return number == std::trunc(number) && number >= -kTwoTo63 && number < kTwoTo63;
}

CFDatum numberAs(const CFDatum& datum, CFField::StorageType storage)
{
    if (datum.IsInteger() && storage != CFField::Integer) {
        const auto number = static_cast<double>(datum.GetInteger());
        if (isWhole(number) && static_cast<std::int64_t>(number) == datum.GetInteger())
            return CFDatum(number);
    }
    if (datum.IsReal() && storage == CFField::Integer && isWhole(datum.GetReal()))
        return CFDatum(static_cast<std::int64_t>(datum.GetReal()));
    return datum;
}

void changeStorage(CFField& field, CFField::StorageType storage)
{
    if (field.GetStorage() == storage)
        return;
    if (!areComparable(field.GetStorage(), storage)) {
        CFField changed(field.GetName(), field.GetType(), storage, field.GetRole());
        changed.SetLabel(field.GetLabel());
        field = changed;
        return;
    }
    field.SetStorage(storage);
    field.SetValues(numbersAs(field.GetValues(), storage));
    field.SetValueLabels(numbersAs(field.GetValueLabels(), storage));
    const CFMissingValues& missing = field.GetMissingValues();
    if (missing.IsValid())
        field.SetMissingValues({CFRange(numberAs(missing.GetRange().GetLower(), storage),
                                        numberAs(missing.GetRange().GetUpper(), storage)),
                                numbersAs(missing.GetValues(), storage), missing.IsNullMissing(),
                                missing.IsWhiteSpMissing()});
}

void adoptMetadata(Fields& fields, const Fields& model)
{
    std::unordered_map<std::string_view, std::vector<const CFField*>> candidates;
    for (const CFField& known : model)
        candidates[known.GetName()].push_back(&known);
    for (CFField& field : fields) {
        const CFField::StorageType storage = field.GetStorage();
        const auto named = candidates.find(field.GetName());
        if (named == candidates.end())
            continue;
        const auto known = std::ranges::find_if(named->second, [&](const CFField* candidate) {
            return areComparable(candidate->GetStorage(), storage);
        });
        if (known == named->second.end())
            continue;
        field = **known;
        changeStorage(field, storage);
        if (storage == CFField::String && field.GetRole() == CFField::FrequencyWeight)
            field.SetRole(CFField::Input);
    }
}

} // namespace datafile
