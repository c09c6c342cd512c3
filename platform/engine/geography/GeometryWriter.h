#pragma once

#include <string>

class OGRGeometry;

namespace EmbeddedHV::maps {

/// Writes a shape as a GeoJSON geometry object: outer rings against the clock, numbers with as many
/// digits as it takes to read the very same ones back, two or three of them a point. False for a
/// shape that is empty, has a number that is not finite, or is of a kind that GeoJSON lacks.
bool writeGeometry(const OGRGeometry& geometry, std::string& out);

} // namespace EmbeddedHV::maps
