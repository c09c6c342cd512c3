#pragma once

#include <span>
#include <vector>

#include "report/maps/MapShape.h"

/// Makes a ring in degrees continuous across the antimeridian: it continues beyond 180 degrees. A
/// ring around a pole is closed along the pole.
void unwrapRing(MapLine& ring);

/// The same for a line, which need not be closed.
void unwrapLine(MapLine& line);

/// Where a map in degrees is cut: all longitudes are converted to the 360 degrees east of the cut.
/// The cut is in the widest gap of the map, so that shapes across the antimeridian stay together.
class MapCut
{
public:
    /// Adds the longitudes of a part.
    void include(std::span<const MapPoint> part);
    /// Finds the cut, after all parts are included.
    void find();
    /// Shifts a part by whole turns so that it begins at or east of the cut.
    void place(std::span<MapPoint> part) const;
    /// Whether a placed part extends beyond the other end and must be repeated at the beginning.
    bool isCrossed(std::span<const MapPoint> part) const;
    double west() const { return _west; }

private:
    /// The longitudes from the western to the eastern end of a part.
    struct Span
    {
        double west;
        double east;
    };

    std::vector<Span> _spans;
    double _west = -180;
};
