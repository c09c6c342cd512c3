#pragma once

#include "CFDatum.h"
#include "CFField.h"

/// Kinds of data in a document; null has none.
enum class DatumKind
{
    Integer,
    Real,
    String
};

/// The default kind for values of a field of this storage.
DatumKind usualKind(CFField::StorageType storage);
/// The kind of a datum that is not null.
DatumKind kindOf(const CFDatum& datum);
/// The word of the document; null for a value outside the enumeration.
const char* WordOf(DatumKind kind);
