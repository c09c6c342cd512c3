#pragma once

#include <iosfwd>
#include <string>

#include "OutputTable.h"

/// The style class that limits a table's column widths; empty if the table sets none.
std::string widthClass(const OutputTable& table);
/// The style sheet rule of that class.
std::string widthRule(const OutputTable& table);

/// Writes a pivot table: a complete grid for every layer, then the caption and the footnotes.
/// `anchor` is the table's anchor.
void writeTable(std::ostream& out, const OutputTable& table, const std::string& anchor);
