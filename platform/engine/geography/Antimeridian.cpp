#include "Antimeridian.h"

#include <cmath>
#include <memory>

#include <ogr_api.h>
#include <ogr_geometry.h>

#include "GdalMessages.h"
#include "GeometryWriter.h"

namespace EmbeddedHV::maps {
namespace {

using GeometryPtr = std::unique_ptr<OGRGeometry>;

constexpr double kFullTurn = 360;
constexpr double kHalf = 180;
constexpr double kPole = 90;
constexpr int kMostTurns =
    2; ///< the largest number of turns around the globe by which a line can be away from its start

/// Makes longitudes continue past the antimeridian instead of jumping to its other side.
void unwrap(OGRSimpleCurve& line)
{
    double shift = 0;
    double before = line.getNumPoints() > 0 ? line.getX(0) : 0;
    for (int i = 1; i < line.getNumPoints(); ++i) {
        const double x = line.getX(i);
        if (std::fabs(x - before) > kHalf)
            shift += x > before ? -kFullTurn : kFullTurn;
        before = x;
        line.setPoint(i, x + shift, line.getY(i), line.getZ(i));
    }
}

/// Closes an unwrapped ring that goes around the globe: adds a line along its pole, back to its
/// first point.
void closeAlongPole(OGRLinearRing& ring)
{
    const int count = ring.getNumPoints();
    if (count == 0 || std::fabs(ring.getX(count - 1) - ring.getX(0)) < kHalf)
        return;
    double sum = 0;
    for (int i = 0; i < count; ++i)
        sum += ring.getY(i);
    const double pole = sum < 0 ? -kPole : kPole;
    const double z = ring.getZ(count - 1);
    ring.addPoint(ring.getX(count - 1), pole, z);
    ring.addPoint(ring.getX(0), pole, z);
    ring.addPoint(ring.getX(0), ring.getY(0), ring.getZ(0));
}

GeometryPtr world()
{
    OGRLinearRing ring;
    for (const auto& [x, y] : {std::pair{-kHalf, -kPole},
                               {kHalf, -kPole},
                               {kHalf, kPole},
                               {-kHalf, kPole},
                               {-kHalf, -kPole}})
        ring.addPoint(x, y);
    auto polygon = std::make_unique<OGRPolygon>();
    polygon->addRing(&ring);
    return polygon;
}

void shift(OGRSimpleCurve& line, double degrees)
{
    for (int i = 0; i < line.getNumPoints(); ++i)
        line.setPoint(i, line.getX(i) + degrees, line.getY(i), line.getZ(i));
}

/// The part of the world that an unwrapped line or polygon covers; null if the geometry is invalid.
/// `outline` is the line, or the only ring of the polygon.
GeometryPtr covered(OGRGeometry& geometry, OGRSimpleCurve& outline)
{
    const GeometryPtr limits = world();
    GeometryPtr result;
    shift(outline, -kFullTurn * (kMostTurns + 1));
    for (int turn = -kMostTurns; turn <= kMostTurns; ++turn) {
        shift(outline, kFullTurn);
        GeometryPtr piece(geometry.Intersection(limits.get()));
        if (!piece)
            return nullptr;
        result.reset(result ? result->Union(piece.get()) : piece.release());
        if (!result)
            return nullptr;
    }
    return result;
}

GeometryPtr covered(const OGRLinearRing& ring)
{
    OGRLinearRing outline(ring);
    unwrap(outline);
    closeAlongPole(outline);
    OGRPolygon polygon;
    polygon.addRing(&outline);
    return covered(polygon, *polygon.getExteriorRing());
}

GeometryPtr cut(const OGRPolygon& polygon)
{
    GeometryPtr result;
    for (const OGRLinearRing* ring : polygon) {
        const GeometryPtr area = covered(*ring);
        if (!area)
            return nullptr;
        result.reset(result ? result->Difference(area.get()) : area->clone());
        if (!result)
            return nullptr;
    }
    return result;
}

GeometryPtr cut(const OGRLineString& line)
{
    OGRLineString copy(line);
    unwrap(copy);
    return covered(copy, copy);
}

/// Collects all parts of a kind, at any depth. An intersection can contain other kinds where areas
/// or lines only touch.
void collect(const OGRGeometry& geometry, OGRwkbGeometryType kind, OGRGeometryCollection& parts)
{
    if (wkbFlatten(geometry.getGeometryType()) == kind)
        parts.addGeometry(&geometry);
    else if (const auto* several = dynamic_cast<const OGRGeometryCollection*>(&geometry))
        for (const OGRGeometry* part : *several)
            collect(*part, kind, parts);
}

/// Adds the cut parts of a geometry. Returns false if it is invalid or cannot be cut.
bool addCut(const OGRGeometry& geometry, OGRGeometryCollection& parts)
{
    if (const auto* several = dynamic_cast<const OGRGeometryCollection*>(&geometry)) {
        for (const OGRGeometry* part : *several)
            if (!addCut(*part, parts))
                return false;
        return true;
    }
    const OGRwkbGeometryType kind = wkbFlatten(geometry.getGeometryType());
    GeometryPtr made;
    if (kind == wkbPolygon)
        made = cut(*geometry.toPolygon());
    else if (kind == wkbLineString)
        made = cut(*geometry.toLineString());
    if (made)
        collect(*made, kind, parts);
    return made != nullptr;
}

} // namespace

bool cutAtAntimeridian(std::string& shape)
{
    const GdalMessages messages;
    const GeometryPtr geometry(
        OGRGeometry::FromHandle(OGR_G_CreateGeometryFromJson(shape.c_str())));
    if (!geometry)
        return false;
    const OGRwkbGeometryType kind = wkbFlatten(geometry->getGeometryType());
    std::unique_ptr<OGRGeometryCollection> parts;
    if (kind == wkbPolygon || kind == wkbMultiPolygon)
        parts = std::make_unique<OGRMultiPolygon>();
    else
        parts = std::make_unique<OGRMultiLineString>();
    if (!addCut(*geometry, *parts) || parts->IsEmpty())
        return false;
    const OGRGeometry& result = parts->getNumGeometries() == 1 ? *parts->getGeometryRef(0) : *parts;
    std::string text;
    if (!writeGeometry(result, text))
        return false;
    shape = std::move(text);
    return true;
}

} // namespace EmbeddedHV::maps
