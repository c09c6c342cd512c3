#pragma once

#include <optional>
#include <vector>

#include "page/PageDocument.h"

/// A place, in degrees or on a plane; later in the units of a drawing.
struct MapPoint
{
    double x = 0;
    double y = 0;
    bool operator==(const MapPoint&) const = default;
};

using MapLine = std::vector<MapPoint>;

/// The parts of a shape by how they are drawn. Rings lie inside or outside of each other as they
/// come: what an even number of them surrounds is a hole.
struct MapShape
{
    std::vector<MapLine> rings;
    std::vector<MapLine> lines;
    MapLine spots;

    bool isEmpty() const { return rings.empty() && lines.empty() && spots.empty(); }
};

/// Reads a GeoJSON geometry. Nothing for one that is broken or empty.
std::optional<MapShape> readShape(const PageJson& geometry);
