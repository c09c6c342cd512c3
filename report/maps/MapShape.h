#pragma once

#include <optional>
#include <vector>

#include "report/document/PageDocument.h"

/// A point in degrees or on a plane; later in units of the drawing.
struct MapPoint
{
    double x = 0;
    double y = 0;
    bool operator==(const MapPoint&) const = default;
};

using MapLine = std::vector<MapPoint>;

/// The parts of a shape by how they are drawn. Rings may be nested: an area that an even number of
/// rings surrounds is a hole.
struct MapShape
{
    std::vector<MapLine> rings;
    std::vector<MapLine> lines;
    MapLine spots;

    bool isEmpty() const { return rings.empty() && lines.empty() && spots.empty(); }
};

/// Reads a GeoJSON geometry. nullopt if it is invalid or empty.
std::optional<MapShape> readShape(const PageJson& geometry);
