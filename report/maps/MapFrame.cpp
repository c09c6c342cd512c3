#include "report/maps/MapFrame.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "report/maps/MapSeam.h"

namespace {

constexpr double kTurn = 360;
constexpr double kPole = 90;
constexpr double kLastMercator = 85;
constexpr double kWidest = 640 * kUnitsPerPixel;
constexpr double kHighest = 520 * kUnitsPerPixel;

template <class Shapes, class Use>
void forEachPart(Shapes& shapes, Use use)
{
    for (auto& shape : shapes) {
        for (auto& ring : shape.rings)
            use(std::span(ring));
        for (auto& line : shape.lines)
            use(std::span(line));
        for (auto& spot : shape.spots)
            use(std::span(&spot, 1));
    }
}

template <class Shapes, class Use>
void forEachPoint(Shapes& shapes, Use use)
{
    forEachPart(shapes, [&](auto part) { std::ranges::for_each(part, use); });
}

/// The smallest rectangle around points.
struct Extent
{
    double west = std::numeric_limits<double>::infinity();
    double east = -std::numeric_limits<double>::infinity();
    double south = west;
    double north = east;

    void include(const MapPoint& point)
    {
        west = std::min(west, point.x);
        east = std::max(east, point.x);
        south = std::min(south, point.y);
        north = std::max(north, point.y);
    }
    bool isEmpty() const { return west > east; }
    double width() const { return east - west; }
    double height() const { return north - south; }
};

Extent extentOf(const std::vector<MapShape>& shapes)
{
    Extent extent;
    forEachPoint(shapes, [&](const MapPoint& point) { extent.include(point); });
    return extent;
}

bool areDegrees(const Extent& extent)
{
    return extent.west >= -kTurn && extent.east <= kTurn && extent.south >= -kPole &&
           extent.north <= kPole;
}

void unwrap(std::vector<MapShape>& shapes)
{
    for (MapShape& shape : shapes) {
        std::ranges::for_each(shape.rings, unwrapRing);
        std::ranges::for_each(shape.lines, unwrapLine);
    }
}

/// Repeats parts that extend beyond the eastern end at the western end.
void repeatCrossed(std::vector<MapLine>& parts, const MapCut& cut)
{
    const std::size_t count = parts.size();
    for (std::size_t at = 0; at < count; ++at)
        if (cut.isCrossed(parts[at])) {
            MapLine again = parts[at];
            for (MapPoint& point : again)
                point.x -= kTurn;
            parts.push_back(std::move(again));
        }
}

/// Shifts all longitudes to the range of the cut and returns the extent of the map.
Extent cutOpen(std::vector<MapShape>& shapes)
{
    unwrap(shapes);
    MapCut cut;
    forEachPart(shapes, [&](auto part) { cut.include(part); });
    cut.find();
    forEachPart(shapes, [&](auto part) { cut.place(part); });
    for (MapShape& shape : shapes) {
        repeatCrossed(shape.rings, cut);
        repeatCrossed(shape.lines, cut);
    }
    Extent extent = extentOf(shapes);
    extent.west = std::max(extent.west, cut.west());
    extent.east = std::min(extent.east, cut.west() + kTurn);
    return extent;
}

double mercator(double latitude)
{
    const double radians =
        std::clamp(latitude, -kLastMercator, kLastMercator) * std::numbers::pi / 180;
    return std::log(std::tan(std::numbers::pi / 4 + radians / 2)) * 180 / std::numbers::pi;
}

/// Converts degrees to lengths with the same unit in both directions.
void project(std::vector<MapShape>& shapes, MapProjection projection, Extent& extent)
{
    if (projection == MapProjection::Mercator) {
        forEachPoint(shapes, [](MapPoint& point) { point.y = mercator(point.y); });
        extent.south = mercator(extent.south);
        extent.north = mercator(extent.north);
        return;
    }
    constexpr double kNarrowest = 0.01;
    const double middle = (extent.south + extent.north) / 2 * std::numbers::pi / 180;
    const double factor = std::max(std::cos(middle), kNarrowest);
    forEachPoint(shapes, [&](MapPoint& point) { point.x *= factor; });
    extent.west *= factor;
    extent.east *= factor;
}

/// Adds space around a single point or points in a line.
void widen(Extent& extent)
{
    constexpr double kLeastShare = 0.1;
    const double least = std::max(extent.width(), extent.height()) * kLeastShare;
    const auto grow = [&](double& from, double& to) {
        const double lack = least > 0 ? least - (to - from) : 1;
        from -= std::max(lack, 0.0) / 2;
        to += std::max(lack, 0.0) / 2;
    };
    grow(extent.west, extent.east);
    grow(extent.south, extent.north);
}

} // namespace

MapFrame layOut(std::vector<MapShape>& shapes, MapProjection projection, double margin)
{
    Extent extent = extentOf(shapes);
    if (extent.isEmpty())
        return {};
    if (projection != MapProjection::Plane && areDegrees(extent)) {
        extent = cutOpen(shapes);
        project(shapes, projection, extent);
    }
    widen(extent);
    const double scale = std::min((kWidest - 2 * margin) / extent.width(),
                                  (kHighest - 2 * margin) / extent.height());
    forEachPoint(shapes, [&](MapPoint& point) {
        point = {margin + (point.x - extent.west) * scale,
                 margin + (extent.north - point.y) * scale};
    });
    return {std::ceil(extent.width() * scale + 2 * margin),
            std::ceil(extent.height() * scale + 2 * margin)};
}
