#pragma once

#include <memory>

#include "TnCellText.h"

/// The texts that are left with the host, by number. Any thread.

/// Keeps a text; its number, 0 or above.
long keepText(std::unique_ptr<const TnCellText> text);
/// Null if there is none of that number. It lives until it is released.
const TnCellText* keptText(long number);
void releaseText(long number);
