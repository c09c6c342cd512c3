#pragma once

#include <string>

#include "maps/ShapePoints.h"

class OGRGeometry;

namespace EmbeddedHV::maps {

/// Writes a shape as a GeoJSON geometry object. Outer rings are counter-clockwise. Numbers have
/// enough digits to be read back exactly. A point has two or three numbers. Returns false if the
/// shape is empty, has an infinite or not-a-number coordinate, or has a kind that GeoJSON does not
/// support.
bool writeGeometry(const OGRGeometry& geometry, std::string& out);
/// The points of the object that writeGeometry writes. Returns false for the same shapes; `shape`
/// is then undefined.
bool readGeometry(const OGRGeometry& geometry, Shape& shape);

} // namespace EmbeddedHV::maps
