#pragma once

#include <iosfwd>

#include "report/maps/MapData.h"

/// Writes what a layer leaves out: invalid shapes, and records without an area.
void writeMapNotes(std::ostream& out, const MapItems& items);
