#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/NumberStyle.h"

/// A number in a style, at most `width` bytes: with fewer decimals if it has to be, then in
/// scientific notation, then as asterisks. Infinity and what is no number have words.
std::string numberText(double value, const NumberStyle& style, int decimals, std::size_t width);

/// The number of such a text; nothing if it is none.
std::optional<double> readNumber(std::string_view text, const NumberStyle& style);
