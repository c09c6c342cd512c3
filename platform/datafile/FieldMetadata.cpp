#include "datafile/FieldMetadata.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "datafile/ColumnTypes.h"

namespace datafile {
namespace {

bool isNumber(CFField::StorageType storage)
{
    return storage == CFField::Integer || storage == CFField::Real;
}

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

CFDatum numberAs(const CFDatum& datum, CFField::StorageType storage)
{
    constexpr double kMostExact = 9007199254740992.0; // 2 to the 53
    if (datum.IsInteger() && storage != CFField::Integer) {
        const auto number = static_cast<double>(datum.GetInteger());
        return std::abs(number) <= kMostExact ? CFDatum(number) : datum;
    }
    if (datum.IsReal() && storage == CFField::Integer &&
        std::trunc(datum.GetReal()) == datum.GetReal() && std::abs(datum.GetReal()) <= kMostExact)
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
    for (CFField& field : fields) {
        const CFField::StorageType storage = field.GetStorage();
        const auto known = std::ranges::find_if(model, [&](const CFField& candidate) {
            return candidate.GetName() == field.GetName() &&
                   areComparable(candidate.GetStorage(), storage);
        });
        if (known == model.end())
            continue;
        field = *known;
        changeStorage(field, storage);
        if (storage == CFField::String && field.GetRole() == CFField::FrequencyWeight)
            field.SetRole(CFField::Input);
    }
}

} // namespace datafile
