#pragma once

#include <string>

#include "page/MapData.h"

/// What is told of an area or a point that is pointed at: its name, and what its looks stand for
/// or what the specification has told of it, a line each.
std::string titleOf(const MapItem& item, const MapLayer& layer);
