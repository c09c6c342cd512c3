#pragma once

#include <string>

#include "VexaFormat.h"

/// A number in any numeric format, without blanks beside it and at most as wide as the format says.
/// Every format that is none of numbers counts as that of general numbers.
std::string valueText(double value, const VEXA_Format& format);
