#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

struct ResultTable;

/// The width if the output is not a terminal.
inline constexpr std::size_t kDefaultWidth = 80;

/// The width of the terminal on standard output; kDefaultWidth if it is not a terminal.
std::size_t outputWidth();

/// The requested width. If `asked` is 0: outputWidth(), or kDefaultWidth for a file. Throws
/// CommandFault (Usage) if a width is requested for another form than text.
std::size_t textWidth(long long asked, const std::string& form, bool toFile = false);

/// Prints a table with lines. Columns that do not fit are printed as further tables, each beginning
/// with the key columns.
void printTextTable(const ResultTable& table, std::size_t width, std::ostream& out);
