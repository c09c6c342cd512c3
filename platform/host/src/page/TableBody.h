#pragma once

#include <iosfwd>

#include "page/TableHead.h"

/// Writes the rows of one grid of a table.
void writeTableBody(std::ostream& out, TableGrid& grid);
