#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "maps/Geography.h"
#include "maps/ShapePoints.h"

namespace EmbeddedHV::maps {

/// The result of a transformation.
enum class MovedShape
{
    Moved,
    Lost,      ///< the shape, or a point of it, does not exist in the target system
    NotAShape, ///< the text is not a GeoJSON geometry object
};

/// Transforms shapes, and reuses its memory from one to the next. One thread at a time.
class ShapeMover
{
public:
    explicit ShapeMover(std::unique_ptr<PointMover> points) : _points(std::move(points)) {}

    PointMover& points() { return *_points; }
    /// Transforms the points of a GeoJSON geometry object and writes the new object to `out`. Keeps
    /// the direction of rings even if the target system mirrors them.
    MovedShape move(std::string_view text, std::string& out);
    /// Transforms the points of `shape` in place, like `move` of a text.
    MovedShape movePoints(Shape& shape, std::string& out);

private:
    std::unique_ptr<PointMover> _points;
    Shape _shape;
    std::vector<char> _before; ///< for each ring whether it was clockwise
    std::vector<char> _after;
};

/// Whether a text is a GeoJSON geometry object of one of the six kinds, with coordinates.
bool isShape(std::string_view text);

} // namespace EmbeddedHV::maps
