#pragma once

#include "CFField.h"

/// Whether the engine compares values of the two types, and appends them to each other: two
/// numbers, a date and a timestamp, or the same type.
bool areComparable(CFField::StorageType one, CFField::StorageType other);

/// The type for a message, for example "a text".
const char* nounOf(CFField::StorageType storage);
