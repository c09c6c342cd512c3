#pragma once

#include <iosfwd>
#include <string>

#include "OutputTable.h"

/// Name of the style that keeps a table's columns within its widths; empty for a table without.
std::string widthClass(const OutputTable& table);
/// The style sheet rule for that name.
std::string widthRule(const OutputTable& table);

/// Writes a pivot table: a grid for every layer, each whole and readable by itself, then the
/// caption and the footnotes. `anchor` is the table's name on the page.
void writeTable(std::ostream& out, const OutputTable& table, const std::string& anchor);
