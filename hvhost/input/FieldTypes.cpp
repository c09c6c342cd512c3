#include "hvhost/input/FieldTypes.h"

#include "hvhost/base/ValueText.h"

bool areComparable(CFField::StorageType one, CFField::StorageType other)
{
    const auto isDay = [](CFField::StorageType storage) {
        return storage == CFField::Date || storage == CFField::Timestamp;
    };
    return one == other || (isNumber(one) && isNumber(other)) || (isDay(one) && isDay(other));
}

const char* nounOf(CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
    case CFField::Real:
        return "a number";
    case CFField::Date:
        return "a date";
    case CFField::Time:
        return "a time";
    case CFField::Timestamp:
        return "a timestamp";
    default:
        return "a text";
    }
}
