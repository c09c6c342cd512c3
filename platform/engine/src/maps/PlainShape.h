#pragma once

#include <string_view>

#include "maps/ShapePoints.h"

namespace EmbeddedHV::maps {

/// Reads a geometry object of the form {"type":"Point","coordinates":[1,2]}, without blanks and
/// other members, several times faster than a parser of JSON. All shapes of map sources have this
/// form. Returns false for any other text, also for one that is a shape; `shape` is then undefined.
bool scanPlainShape(std::string_view text, Shape& shape);
/// The same without the points.
bool isPlainShape(std::string_view text);

} // namespace EmbeddedHV::maps
