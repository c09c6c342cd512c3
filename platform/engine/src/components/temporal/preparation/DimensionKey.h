#pragma once

#include <string>
#include <string_view>

#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A text that is the same for all spellings of one value of a dimension, and differs for different
/// values. Numbers are compared by value ("07" is 7 and "1" is 1.0), dates and times by the moment,
/// texts byte by byte. A text that the storage cannot hold is its own key.
std::string dimensionKey(std::string_view value, CFField::StorageType storage);

} // namespace EmbeddedHV
