#pragma once

#include <string>

class OGRGeometry;

namespace EmbeddedHV::maps {

/// Writes a shape as a GeoJSON geometry object. Outer rings are counter-clockwise. Numbers have
/// enough digits to be read back exactly. A point has two or three numbers. Returns false if the
/// shape is empty, has an infinite or not-a-number coordinate, or has a kind that GeoJSON does not
/// support.
bool writeGeometry(const OGRGeometry& geometry, std::string& out);

} // namespace EmbeddedHV::maps
