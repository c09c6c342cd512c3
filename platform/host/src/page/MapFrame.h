#pragma once

#include <vector>

#include "page/MapShape.h"

/// How places become places of a drawing.
enum class MapProjection
{
    Equirectangular, ///< degrees, as wide as they are high in the middle of the map
    Mercator,
    Plane ///< coordinates of a plane, as they are
};

/// A drawing's units, ten of which make a pixel, so that whole numbers are fine enough.
constexpr double kUnitsPerPixel = 10;

/// The size of a drawing, in its units.
struct MapFrame
{
    double width = 0;
    double height = 0;
};

/// Lays shapes out in a frame that has their proportions, `margin` units inside of it. What lies
/// across the antimeridian stays together; what a map of the whole earth cuts through is there at
/// both ends. Coordinates that cannot be degrees are those of a plane.
MapFrame layOut(std::vector<MapShape>& shapes, MapProjection projection, double margin);
