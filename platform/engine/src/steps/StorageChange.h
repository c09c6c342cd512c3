#pragma once

#include <optional>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// The column of a field converted to another storage, as SQL. Empty if the storages are not
/// convertible. A value that the new storage cannot hold exactly raises an error that names the
/// step, the field and the value. A blank text becomes a missing value.
std::optional<std::string> convertedColumn(const CFField& field, CFField::StorageType storage,
                                           const std::string& step);

} // namespace EmbeddedHV
