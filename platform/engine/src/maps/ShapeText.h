#pragma once

#include <string>
#include <string_view>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The result of a transformation.
enum class MovedShape
{
    Moved,
    Lost,      ///< the shape, or a point of it, does not exist in the target system
    NotAShape, ///< the text is not a GeoJSON geometry object
};

/// Transforms the points of a GeoJSON geometry object and writes the new object to `out`. Keeps the
/// direction of rings even if the target system mirrors them.
MovedShape moveShape(std::string_view text, PointMover& mover, std::string& out);

/// Whether a text is a GeoJSON geometry object of one of the six kinds, with coordinates.
bool isShape(std::string_view text);

} // namespace EmbeddedHV::maps
