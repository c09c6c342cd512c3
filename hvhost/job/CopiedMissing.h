#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"

/// How a file is read whose records are copied. A copy keeps the values that its file declares
/// missing. But an expression over the records must not use such a value as a number.
InputOptions copiedReading(const InputOptions& input, const RecordOptions& records);

/// The warning about a file whose declared missing values become system-missing although the user
/// did not ask for that.
std::string missingIsLost(const std::string& file);
