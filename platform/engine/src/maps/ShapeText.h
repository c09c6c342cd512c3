#pragma once

#include <string>
#include <string_view>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// What became of a shape.
enum class MovedShape
{
    Moved,
    Lost,      ///< it has no place in the other system, or a point of it has none
    NotAShape, ///< the text is no geometry object of GeoJSON's
};

/// Moves the points of a shape, a GeoJSON geometry object, and writes the shape with them. Its
/// rings keep their direction where the other system mirrors them.
MovedShape moveShape(std::string_view text, PointMover& mover, std::string& out);

/// Whether a text is a geometry object of GeoJSON's: of one of the six kinds, with coordinates.
bool isShape(std::string_view text);

} // namespace EmbeddedHV::maps
