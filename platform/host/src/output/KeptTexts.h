#pragma once

#include <memory>

#include "TnCellText.h"

/// Texts that are stored in the host, by number. Any thread.

/// Stores a text and returns its number, 0 or above.
long keepText(std::unique_ptr<const TnCellText> text);
/// Null for an unknown number. Valid until releaseText.
const TnCellText* keptText(long number);
void releaseText(long number);
