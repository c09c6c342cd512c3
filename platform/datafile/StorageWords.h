#pragma once

#include "CFField.h"

namespace datafile {

/// The name of the type in messages, for example "Integer".
const char* typeWordOf(CFField::StorageType storage);
/// Continuous for numbers, nominal for all others.
CFField::FieldType defaultMeasure(CFField::StorageType storage);

} // namespace datafile
