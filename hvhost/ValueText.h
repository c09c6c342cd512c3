#pragma once

#include <string>

#include "CFField.h"

/// Whether values of this storage are plain numbers, and no moments.
bool isNumber(CFField::StorageType storage);

/// The shortest text that reads back as the same number.
std::string shortestNumber(double value);

/// A number of the engine as text, by what it counts: days since 1970-01-01, seconds of the day,
/// seconds since 1970-01-01, or itself.
std::string numberText(double number, CFField::StorageType storage);
