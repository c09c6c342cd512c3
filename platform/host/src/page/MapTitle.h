#pragma once

#include <string>

#include "page/MapData.h"

/// The text for an area or a point under the pointer: its name, and either what its looks mean or
/// what the map's definition says about it, a line each.
std::string titleOf(const MapItem& item, const MapLayer& layer);
