#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "HostExport.h"

/// How texts stand in a terminal. All texts are UTF-8; widths count the places that a terminal
/// gives its characters: two for a wide one, none for an accent that is added to the one before.

/// The text in one line without what would command the terminal or turn what stands around it: a
/// tab as a blank, another control character, a byte that is no UTF-8 and a mark that changes the
/// direction of writing as U+FFFD.
HOST_API std::string terminalText(std::string_view text);

/// The same for each line of a text; a text without a line end is one line.
HOST_API std::vector<std::string> terminalLines(std::string_view text);

HOST_API std::size_t terminalWidth(std::string_view text);

/// A text of at most so many places; a longer one ends in an ellipsis, between two characters as a
/// reader sees them.
HOST_API std::string terminalCut(const std::string& text, std::size_t width);

/// A text that is written from right to left, set apart from what stands around it; any other text
/// as it is. For texts as terminalText gives them, cut or whole.
HOST_API std::string terminalIsolated(const std::string& text);

/// The text in lines of at most so many places, broken where its language allows, and at line ends.
HOST_API std::vector<std::string> terminalWrapped(std::string_view text, std::size_t width);
