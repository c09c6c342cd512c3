#pragma once

#include <iosfwd>

#include "report/page/TableHead.h"

/// Writes the rows of one grid of a table.
void writeTableBody(std::ostream& out, TableGrid& grid);
