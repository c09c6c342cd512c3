#pragma once

#include <vector>

#include "report/maps/MapShape.h"

/// How coordinates are mapped to the drawing.
enum class MapProjection
{
    Equirectangular, ///< degrees, scaled to equal length in the middle of the map
    Mercator,
    Plane ///< coordinates of a plane, unchanged
};

/// Units of a drawing per pixel, so that integers are precise enough.
constexpr double kUnitsPerPixel = 10;

/// The size of a drawing in units.
struct MapFrame
{
    double width = 0;
    double height = 0;
};

/// Maps shapes to a frame of their proportions, `margin` units inside. Shapes across the
/// antimeridian are kept together; shapes that a map of the whole earth cuts appear at both ends.
/// Coordinates that cannot be degrees are treated as a plane.
MapFrame layOut(std::vector<MapShape>& shapes, MapProjection projection, double margin);
