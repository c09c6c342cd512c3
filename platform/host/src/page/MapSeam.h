#pragma once

#include <span>
#include <vector>

#include "page/MapShape.h"

/// Makes a ring in degrees whole that crosses the antimeridian: it goes on beyond 180 degrees
/// instead of leaping to the other side. One around a pole is closed along the pole.
void unwrapRing(MapLine& ring);

/// The same for a line, which needs not end where it begins.
void unwrapLine(MapLine& line);

/// Where a map in degrees is cut: all longitudes are told from here to 360 degrees further east.
/// The cut lies where the map has the widest gap, so that what lies on both sides of the
/// antimeridian stays together.
class MapCut
{
public:
    /// Takes the longitudes of a part into account.
    void include(std::span<const MapPoint> part);
    /// Once all parts are included: finds the cut.
    void find();
    /// Moves a part by whole turns, to begin at the cut or east of it.
    void place(std::span<MapPoint> part) const;
    /// Whether a part that is placed goes on beyond the other end, so that a part of it belongs at
    /// the beginning.
    bool isCrossed(std::span<const MapPoint> part) const;
    double west() const { return _west; }

private:
    /// Longitudes from the western to the eastern end of a part.
    struct Span
    {
        double west;
        double east;
    };

    std::vector<Span> _spans;
    double _west = -180;
};
