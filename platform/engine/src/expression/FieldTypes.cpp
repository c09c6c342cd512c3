#include "expression/FieldTypes.h"

#include <utility>

namespace EmbeddedHV {
namespace {

constexpr std::pair<CFField::StorageType, ValueType> kTypes[] = {
    {CFField::Integer, ValueType::Integer}, {CFField::Real, ValueType::Real},
    {CFField::String, ValueType::String},   {CFField::Date, ValueType::Date},
    {CFField::Time, ValueType::Time},       {CFField::Timestamp, ValueType::Timestamp},
};

} // namespace

CFField::StorageType storageOf(ValueType type)
{
    for (const auto& [storage, value] : kTypes)
        if (value == type)
            return storage;
    return type == ValueType::Boolean ? CFField::Integer : CFField::String;
}

ValueType valueTypeOf(CFField::StorageType storage)
{
    for (const auto& [known, value] : kTypes)
        if (known == storage)
            return value;
    return ValueType::String; // a string can hold any value
}

} // namespace EmbeddedHV
