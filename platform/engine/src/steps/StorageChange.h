#pragma once

#include <string>

#include "CFField.h"
#include "dialect/Dialect.h"

namespace EmbeddedHV {

/// Whether the values of a field can be converted to a storage.
bool isConvertible(const CFField& field, CFField::StorageType storage);

/// The column of a field converted to a storage, to which it must be convertible, as SQL. A value
/// that the new storage cannot hold exactly raises an error that names the step, the field and the
/// value. A blank text becomes a missing value.
std::string convertedColumn(const Dialect& dialect, const CFField& field,
                            CFField::StorageType storage, const std::string& step);

} // namespace EmbeddedHV
