#pragma once

#include <string>

namespace EmbeddedHV::maps {

/// Cuts a GeoJSON geometry in degrees at the antimeridian, longitude 180. Between two points a line
/// takes the shorter way around the globe. A ring that goes around the globe contains the nearer
/// pole. Returns false if the geometry cannot be cut; the text is then unchanged.
bool cutAtAntimeridian(std::string& shape);

} // namespace EmbeddedHV::maps
