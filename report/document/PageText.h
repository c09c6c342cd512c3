#pragma once

#include <string>
#include <string_view>

/// Makes data safe for a page: valid UTF-8, with control characters replaced by their pictures
/// (HTML does not allow them) and markup escaped. For elements and quoted attributes.
std::string escaped(std::string_view text);

/// The same as an element that isolates its writing direction. A long text gets a box with a scroll
/// bar.
std::string isolated(std::string_view text);

/// The same for a text that is alone in a cell of a table. An ASCII text needs no element of its
/// own.
std::string labelText(std::string_view text);

/// The same for a cell where a backslash and an "n" start a new line.
std::string cellText(std::string_view text);

/// The first words of a text for a link or list: at most `limit` bytes and an ellipsis.
std::string shortened(std::string_view text, std::size_t limit = 120);

/// base::roundedNumber with a minus sign instead of a hyphen.
std::string roundedNumber(double number, int digits = 6);

/// JSON text for a script element: ASCII, and without sequences that HTML would interpret.
std::string scriptText(std::string_view asciiJson);
