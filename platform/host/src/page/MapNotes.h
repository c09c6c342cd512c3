#pragma once

#include <iosfwd>

#include "page/MapData.h"

/// Writes what a layer of a map leaves out: shapes that are broken, records without an area.
void writeMapNotes(std::ostream& out, const MapItems& items);
