#pragma once

#include <string>

#include "report/maps/MapData.h"

/// The tooltip of an area or point: its name, and either the meaning of its look or the fields of
/// the map's definition, one per line.
std::string titleOf(const MapItem& item, const MapLayer& layer);
