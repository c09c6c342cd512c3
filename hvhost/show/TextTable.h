#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "hvhost/base/TextRequest.h"

struct ResultTable;

/// How text is laid out.
struct TextForm
{
    std::size_t width = 0;
    bool groupsDigits = false;
};

/// The width if the output is not a terminal.
inline constexpr std::size_t kDefaultWidth = 80;

/// The width of the terminal on standard output; kDefaultWidth if it is not a terminal.
std::size_t outputWidth();

/// The requested form. If no width is requested: outputWidth(), or kDefaultWidth for a file. Throws
/// CommandFault (Usage) if something is requested for another form of output than text.
TextForm textForm(const TextRequest& asked, const std::string& form, bool toFile = false);

/// Prints a table with lines. Columns that do not fit are printed as further tables, each beginning
/// with the key columns.
void printTextTable(const ResultTable& table, const TextForm& form, std::ostream& out);
