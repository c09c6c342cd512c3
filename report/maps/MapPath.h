#pragma once

#include <string>
#include <vector>

#include "report/maps/MapShape.h"

/// Path data of rings in whole units, without points closer than half a pixel. A smaller area
/// becomes a dot, so that it stays visible.
std::string areaPath(const std::vector<MapLine>& rings);

std::string linePath(const std::vector<MapLine>& lines);

/// Lines of zero length, which round ends show as dots.
std::string spotPath(const MapLine& spots);
