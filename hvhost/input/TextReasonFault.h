#pragma once

#include "hvhost/base/CommandFault.h"

class InputFile;

/// The fault of a job that needs a number and has a text. If the field is a text because of a
/// single value, the text names the value and its line, and the hint an option. Other faults are
/// returned unchanged. Throws what the watch of the input throws.
CommandFault withTextReason(const CommandFault& fault, const InputFile& input);
