#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/NumberStyle.h"

/// Formats a number in a style with at most `width` bytes: with fewer decimals if necessary, then
/// in scientific notation, then as asterisks. Infinity and NaN are words.
std::string numberText(double value, const NumberStyle& style, int decimals, std::size_t width);

/// The number of such a text; nullopt if it is invalid.
std::optional<double> readNumber(std::string_view text, const NumberStyle& style);
