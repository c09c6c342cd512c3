#pragma once

#include "DataFileNames.h"
#include "datafile/ColumnTypes.h"
#include "expression/Schema.h"

namespace EmbeddedHV {

/// The type of a field's values in expressions, and back.
CFField::StorageType storageOf(ValueType type);
ValueType valueTypeOf(CFField::StorageType storage);

} // namespace EmbeddedHV
