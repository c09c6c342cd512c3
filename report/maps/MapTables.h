#pragma once

#include <iosfwd>
#include <string>

#include "report/maps/MapData.h"

/// Writes the data of a map as tables: records, and the properties of areas without any.
void writeMapTables(std::ostream& out, const MapSpec& spec, MapSources& sources,
                    const std::string& title);
