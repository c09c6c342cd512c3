#pragma once

#include "DataFileNames.h"
#include "datafile/StorageWords.h"
#include "expression/Schema.h"

namespace EmbeddedHV {

/// The storage of a field that holds values of a type.
CFField::StorageType storageOf(ValueType type);
/// The type of a field's values in expressions.
ValueType valueTypeOf(CFField::StorageType storage);

} // namespace EmbeddedHV
