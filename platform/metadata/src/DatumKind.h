#pragma once

#include "CFDatum.h"
#include "CFField.h"

/// The kinds of data in a document; a null has none.
enum class DatumKind
{
    Integer,
    Real,
    String
};

/// The kind that the values of a field have when the document says nothing else.
DatumKind usualKind(CFField::StorageType storage);
/// The kind of a datum that is not null.
DatumKind kindOf(const CFDatum& datum);
/// The word of the document; null for a value outside the enumeration.
const char* WordOf(DatumKind kind);
