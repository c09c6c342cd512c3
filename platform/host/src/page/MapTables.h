#pragma once

#include <iosfwd>
#include <string>

#include "page/MapData.h"

/// Writes what a map was made of as tables: records, and the properties of areas without any.
void writeMapTables(std::ostream& out, const MapSpec& spec, MapSources& sources,
                    const std::string& title);
