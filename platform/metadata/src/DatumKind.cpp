#include "DatumKind.h"

#include "WordTable.h"

namespace {

constexpr std::array<const char*, 3> kKindWords = {"integer", "real", "string"};

} // namespace

DatumKind usualKind(CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
        return DatumKind::Integer;
    case CFField::Real:
    case CFField::Date:
    case CFField::Time:
    case CFField::Timestamp:
        return DatumKind::Real;
    default:
        return DatumKind::String;
    }
}

DatumKind kindOf(const CFDatum& datum)
{
    if (datum.IsInteger())
        return DatumKind::Integer;
    return datum.IsReal() ? DatumKind::Real : DatumKind::String;
}

const char* WordOf(DatumKind kind)
{
    return wordAt(kKindWords, static_cast<int>(kind));
}
