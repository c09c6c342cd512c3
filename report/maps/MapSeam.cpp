#include "report/maps/MapSeam.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFullTurn = 360;
constexpr double kHalfTurn = 180;
constexpr double kPoleLatitude = 90;
constexpr double kNegligible = 1e-9;

bool isOnSeam(const MapPoint& point)
{
    return std::abs(std::abs(point.x) - kHalfTurn) < kNegligible;
}

bool isLeap(const MapPoint& from, const MapPoint& to)
{
    return std::abs(to.x - from.x) > kHalfTurn;
}

/// Whether all leaps follow the seam, as in outlines that were cut there for a flat map.
bool isFlat(const MapLine& ring)
{
    for (std::size_t at = 0; at < ring.size(); ++at) {
        const MapPoint& next = ring[(at + 1) % ring.size()];
        if (isLeap(ring[at], next) && !(isOnSeam(ring[at]) && isOnSeam(next)))
            return false;
    }
    return true;
}

/// The equivalent longitude that is nearest to another one.
double nearest(double longitude, double to)
{
    return longitude + kFullTurn * std::round((to - longitude) / kFullTurn);
}

std::pair<double, double> endsOf(std::span<const MapPoint> part)
{
    const auto [west, east] = std::ranges::minmax(part, {}, &MapPoint::x);
    return {west.x, east.x};
}

/// Extends the ring to the pole that it surrounds, along it, and back.
void closeAlongPole(MapLine& ring)
{
    double sum = 0;
    for (const MapPoint& point : ring)
        sum += point.y;
    const double pole = std::copysign(kPoleLatitude, sum);
    const MapPoint first = ring.front();
    const double turn = std::copysign(kFullTurn, ring.back().x - first.x);
    ring.push_back({first.x + turn, first.y});
    ring.push_back({first.x + turn, pole});
    ring.push_back({first.x, pole});
}

} // namespace

void unwrapLine(MapLine& line)
{
    for (std::size_t at = 1; at < line.size(); ++at)
        line[at].x = nearest(line[at].x, line[at - 1].x);
}

void unwrapRing(MapLine& ring)
{
    MapLine whole = ring;
    unwrapLine(whole);
    const bool isClosed = !isLeap(whole.back(), whole.front());
    const auto [west, east] = endsOf(whole);
    if (isFlat(ring) && (!isClosed || east - west < kNegligible))
        return;
    if (!isClosed)
        closeAlongPole(whole);
    ring = std::move(whole);
}

void MapCut::include(std::span<const MapPoint> part)
{
    if (part.empty())
        return;
    const auto [west, east] = endsOf(part);
    const double start = west - kFullTurn * std::floor((west + kHalfTurn) / kFullTurn);
    _spans.push_back({start, start + east - west});
}

void MapCut::find()
{
    std::ranges::sort(_spans, {}, &Span::west);
    if (_spans.empty())
        return;
    double reached = _spans.front().east;
    for (const Span& span : _spans)
        reached = std::max(reached, span.east);
    // A span that crosses the seam covers the beginning of the circle.
    reached -= kFullTurn;
    double widest = kNegligible;
    for (const Span& span : _spans) {
        if (span.west - reached > widest) {
            widest = span.west - reached;
            _west = span.west;
        }
        reached = std::max(reached, span.east);
    }
}

void MapCut::place(std::span<MapPoint> part) const
{
    if (part.empty())
        return;
    const double turns = std::floor((endsOf(part).first - _west + kNegligible) / kFullTurn);
    for (MapPoint& point : part)
        point.x -= kFullTurn * turns;
}

bool MapCut::isCrossed(std::span<const MapPoint> part) const
{
    return !part.empty() && endsOf(part).second > _west + kFullTurn + kNegligible;
}
