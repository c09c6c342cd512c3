#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

struct ResultTable;

/// The width of what is no terminal.
inline constexpr std::size_t kDefaultWidth = 80;

/// The width of the terminal that standard output is; kDefaultWidth if it is none.
std::size_t outputWidth();

/// The width that is asked for; without one, 0, outputWidth(), or kDefaultWidth for a file. Throws
/// CommandFault (Usage) for a width of what is shown in another form than text.
std::size_t textWidth(long long asked, const std::string& form, bool toFile = false);

/// Draws a table with lines. Columns that do not fit in the width go into further tables, each with
/// the key columns first again.
void printTextTable(const ResultTable& table, std::size_t width, std::ostream& out);
