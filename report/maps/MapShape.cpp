#include "report/maps/MapShape.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFarthest = 1e12;

/// Collects the parts of a geometry. Each operation returns whether its input was valid.
class ShapeReader
{
public:
    bool read(const PageJson& geometry);
    MapShape take() { return std::move(_shape); }

private:
    /// Reads the coordinates of one kind of geometry.
    using Reader = bool (ShapeReader::*)(const PageJson&);

    bool readCollection(const PageJson& geometry);
    bool readPoint(const PageJson& position);
    bool readLine(const PageJson& positions);
    bool readPolygon(const PageJson& rings);
    template <Reader read>
    bool readEach(const PageJson& parts);
    static std::optional<MapPoint> pointOf(const PageJson& position);
    static std::optional<MapLine> lineOf(const PageJson& positions);

    MapShape _shape;
};

/// Ignores heights and measures behind the second number.
std::optional<MapPoint> ShapeReader::pointOf(const PageJson& position)
{
    if (!position.is_array() || position.size() < 2 || !position[0].is_number() ||
        !position[1].is_number())
        return std::nullopt;
    const MapPoint point{position[0].get<double>(), position[1].get<double>()};
    const bool isNear = std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest;
    return isNear ? std::optional(point) : std::nullopt;
}

std::optional<MapLine> ShapeReader::lineOf(const PageJson& positions)
{
    if (!positions.is_array())
        return std::nullopt;
    MapLine line;
    line.reserve(positions.size());
    for (const PageJson& position : positions) {
        const std::optional<MapPoint> point = pointOf(position);
        if (!point)
            return std::nullopt;
        if (line.empty() || line.back() != *point)
            line.push_back(*point);
    }
    return line;
}

bool ShapeReader::readPoint(const PageJson& position)
{
    const std::optional<MapPoint> point = pointOf(position);
    if (point)
        _shape.spots.push_back(*point);
    return point.has_value();
}

bool ShapeReader::readLine(const PageJson& positions)
{
    std::optional<MapLine> line = lineOf(positions);
    if (line && line->size() > 1)
        _shape.lines.push_back(std::move(*line));
    return line.has_value();
}

/// Removes the repeated last point of a ring, and drops rings without area.
bool ShapeReader::readPolygon(const PageJson& rings)
{
    constexpr std::size_t kFewestCorners = 3;
    if (!rings.is_array())
        return false;
    for (const PageJson& positions : rings) {
        std::optional<MapLine> ring = lineOf(positions);
        if (!ring)
            return false;
        if (ring->size() > 1 && ring->front() == ring->back())
            ring->pop_back();
        if (ring->size() >= kFewestCorners)
            _shape.rings.push_back(std::move(*ring));
    }
    return true;
}

template <ShapeReader::Reader read>
bool ShapeReader::readEach(const PageJson& parts)
{
    return parts.is_array() && std::all_of(parts.begin(), parts.end(), [this](const auto& part) {
               return (this->*read)(part);
           });
}

bool ShapeReader::readCollection(const PageJson& geometry)
{
    const PageJson* parts = memberOf(geometry, "geometries");
    return parts && readEach<&ShapeReader::read>(*parts);
}

bool ShapeReader::read(const PageJson& geometry)
{
    struct Kind
    {
        std::string_view word;
        Reader reader;
    };
    constexpr Kind kinds[] = {{"Point", &ShapeReader::readPoint},
                              {"MultiPoint", &ShapeReader::readEach<&ShapeReader::readPoint>},
                              {"LineString", &ShapeReader::readLine},
                              {"MultiLineString", &ShapeReader::readEach<&ShapeReader::readLine>},
                              {"Polygon", &ShapeReader::readPolygon},
                              {"MultiPolygon", &ShapeReader::readEach<&ShapeReader::readPolygon>}};
    const PageJson* type = memberOf(geometry, "type");
    if (!type || !type->is_string())
        return false;
    const std::string& word = type->get_ref<const std::string&>();
    if (word == "GeometryCollection")
        return readCollection(geometry);
    const auto* kind = std::ranges::find(kinds, std::string_view(word), &Kind::word);
    const PageJson* coordinates = memberOf(geometry, "coordinates");
    return kind != std::end(kinds) && coordinates && (this->*kind->reader)(*coordinates);
}

} // namespace

std::optional<MapShape> readShape(const PageJson& geometry)
{
    ShapeReader reader;
    if (!reader.read(geometry))
        return std::nullopt;
    MapShape shape = reader.take();
    return shape.isEmpty() ? std::nullopt : std::optional(std::move(shape));
}
