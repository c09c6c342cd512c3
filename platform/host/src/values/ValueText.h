#pragma once

#include <string>

#include "VexaFormat.h"

/// A number in any numeric format, without blanks beside it and at most as wide as the format says.
/// A format that is none of numbers shows all decimals there are.
std::string valueText(double value, const VEXA_Format& format);
