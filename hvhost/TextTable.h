#pragma once

#include <cstddef>
#include <iosfwd>

struct ResultTable;

/// The width of what is no terminal.
inline constexpr std::size_t kDefaultWidth = 80;

/// The width of the terminal that standard output is; kDefaultWidth if it is none.
std::size_t outputWidth();

/// Draws a table with lines. Columns that do not fit in the width go into further tables, each with
/// the key columns first again.
void printTextTable(const ResultTable& table, std::size_t width, std::ostream& out);
