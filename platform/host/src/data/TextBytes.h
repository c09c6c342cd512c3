#pragma once

#include <cstddef>
#include <string>

// What the bytes of a text file tell its import. A file that cannot be read has none; the database
// reports the reason.

/// The option of the database's reader for the mark at the start of the file; empty without one.
const char* optionOfMark(const std::string& path);

/// The number of separators of any kind in the longest of the first lines: about the number of
/// columns, which the database needs memory for.
std::size_t separatorsInLine(const std::string& path);

/// Whether the file has a quote; false if `quote` is 0. Several threads of the database may begin
/// at wrong places in such a file, and fail or lose records.
bool hasQuote(const std::string& path, char quote);
