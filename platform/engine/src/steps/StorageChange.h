#pragma once

#include <optional>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// The column of a field as SQL of another storage; nullopt if values of the one never become
/// values of the other. A value that the new storage cannot hold exactly raises a fault that
/// names the step, the field and the value; a blank text becomes a missing value.
std::optional<std::string> convertedColumn(const CFField& field, CFField::StorageType storage,
                                           const std::string& step);

} // namespace EmbeddedHV
