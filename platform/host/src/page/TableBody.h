#pragma once

#include <iosfwd>

#include "page/TableHead.h"

/// Writes the rows of one grid of a table as they come. `address` has the layer's categories in it.
void writeTableBody(std::ostream& out, TableGrid& grid, OutputCells::Address address);
