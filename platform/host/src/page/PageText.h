#pragma once

#include <string>
#include <string_view>

/// Text from data for a page: valid UTF-8, in which control characters, which HTML does not take,
/// show as their pictures, and markup characters are escaped. Good in elements and in quoted
/// attributes.
std::string escaped(std::string_view text);

/// The same as an element that keeps its direction of writing to itself: what stands beside it is
/// not turned round. A long text gets a box of its own with a scroll bar.
std::string isolated(std::string_view text);

/// The same for one cell of a table, where a backslash and an "n" begin a new line.
std::string cellText(std::string_view text);

/// The first words of a text, for a link or a list: at most `limit` bytes and an ellipsis.
std::string shortened(std::string_view text, std::size_t limit = 120);

/// A number with as many digits as it takes to read the same number back.
std::string fullNumber(double number);

/// A number for the eye: so many digits that count, without zeros behind them.
std::string roundedNumber(double number, int digits = 6);

/// JSON text for a script element: ASCII, and nothing in it that markup could take for its own.
std::string scriptText(std::string_view asciiJson);
