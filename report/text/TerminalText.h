#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "report/ReportExport.h"

/// Texts in a terminal. All texts are UTF-8. Widths count terminal columns: two for a wide
/// character, none for a combining accent.

/// Makes a text safe for one line of a terminal. A tab becomes a blank. Other control characters,
/// invalid bytes and marks that change the writing direction become U+FFFD.
REPORT_API std::string terminalText(std::string_view text);

/// Splits a text at its line ends and makes each line safe as terminalText does. A text without a
/// line end is one line.
REPORT_API std::vector<std::string> terminalLines(std::string_view text);

/// The width of a text.
REPORT_API std::size_t terminalWidth(std::string_view text);

/// Limits a text to `width` columns. A longer text is cut between two visible characters and ends
/// in an ellipsis.
REPORT_API std::string terminalCut(const std::string& text, std::size_t width);

/// Isolates a right-to-left text from the texts around it; other texts are unchanged. The text must
/// come from terminalText, possibly cut.
REPORT_API std::string terminalIsolated(const std::string& text);

/// Splits a text into lines of at most `width` columns, at line ends and where its language allows
/// a break.
REPORT_API std::vector<std::string> terminalWrapped(std::string_view text, std::size_t width);
