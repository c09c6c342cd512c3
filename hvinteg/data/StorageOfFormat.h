#pragma once

#include <cstdint>

#include "CFField.h"

/// What the engine stores a variable as, by the type of its print format: dates and times are
/// numbers to the host.
CFField::StorageType storageOfFormatType(std::uint8_t formatType);
