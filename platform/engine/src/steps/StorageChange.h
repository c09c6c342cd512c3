#pragma once

#include <optional>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// The column of a field as SQL of another storage; nullopt if values of the one never become
/// values of the other. A value that the new storage cannot hold exactly fails the statement with
/// the message that kStorageFault begins; a blank text becomes a missing value.
std::optional<std::string> convertedColumn(const CFField& field, CFField::StorageType storage);

/// What the message of such a failure has in it, between field and storage.
inline constexpr const char* kStorageFault = "\" cannot be stored as ";

} // namespace EmbeddedHV
