#pragma once

#include <string>

#include "VexaFormat.h"

/// A number in any numeric format, without blanks and at most as wide as the format. A format that
/// is not numeric shows all decimals.
std::string valueText(double value, const VEXA_Format& format);
