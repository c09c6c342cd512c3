#pragma once

#include <string>

#include "CFField.h"

/// Whether values of this storage are plain numbers rather than dates or times.
bool isNumber(CFField::StorageType storage);

/// A number of the engine as text: a date from days since 1970-01-01, a time from seconds since
/// midnight, a timestamp from seconds since 1970-01-01, or the number itself.
std::string numberText(double number, CFField::StorageType storage);
