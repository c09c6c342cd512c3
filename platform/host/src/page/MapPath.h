#pragma once

#include <string>
#include <vector>

#include "page/MapShape.h"

/// Path data of rings, in whole units, without points that lie closer together than half a pixel.
/// An area that is smaller than that becomes a speck, so that it can still be found.
std::string areaPath(const std::vector<MapLine>& rings);

std::string linePath(const std::vector<MapLine>& lines);

/// Lines without length, which round ends make dots.
std::string spotPath(const MapLine& spots);
