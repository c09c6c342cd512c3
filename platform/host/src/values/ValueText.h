#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "VexaFormat.h"

/// A number in any numeric format, without blanks and at most as wide as the format. A format that
/// is not numeric shows all decimals.
std::string valueText(double value, const VEXA_Format& format);

/// The number of characters from the decimal sign on or, without one, behind the number. nullopt
/// for scientific notation and dates.
std::optional<std::size_t> fractionOf(std::string_view text, const VEXA_Format& format);
