#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "VexaFormat.h"

/// A number in any numeric format, without blanks beside it and at most as wide as the format says.
/// A format that is none of numbers shows all decimals there are.
std::string valueText(double value, const VEXA_Format& format);

/// How many characters of such a text stand from its decimal sign on; where there is none, those of
/// what follows the number. Nothing for scientific notation and for dates.
std::optional<std::size_t> fractionOf(std::string_view text, const VEXA_Format& format);
