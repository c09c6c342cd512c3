#include "GeometryWriter.h"

#include <cmath>
#include <memory>

#include <ogr_geometry.h>

#include "base/NumberText.h"

namespace EmbeddedHV::maps {
namespace {

/// Appends text and records whether everything could be written.
class Writer
{
public:
    explicit Writer(std::string& out) : _out(out) {}
    bool isGood() const { return _isGood; }

    void object(const OGRGeometry& geometry);

private:
    void number(double value);
    void position(double x, double y, double z, bool hasZ);
    void point(const OGRPoint& point);
    void points(const OGRSimpleCurve& line, bool backwards = false);
    void polygon(const OGRPolygon& polygon);
    template <class Parts, class Write>
    void list(const Parts& parts, Write write);
    template <class Write>
    void member(const char* type, Write write);

    std::string& _out;
    bool _isGood = true;
};

void Writer::number(double value)
{
    if (!std::isfinite(value)) {
        _isGood = false;
        return;
    }
    base::appendNumber(_out, value);
}

void Writer::position(double x, double y, double z, bool hasZ)
{
    _out += '[';
    number(x);
    _out += ',';
    number(y);
    if (hasZ) {
        _out += ',';
        number(z);
    }
    _out += ']';
}

void Writer::point(const OGRPoint& point)
{
    position(point.getX(), point.getY(), point.getZ(), point.Is3D());
}

void Writer::points(const OGRSimpleCurve& line, bool backwards)
{
    const int count = line.getNumPoints();
    const bool hasZ = line.Is3D();
    _out += '[';
    for (int i = 0; i < count; ++i) {
        const int at = backwards ? count - 1 - i : i;
        if (i > 0)
            _out += ',';
        position(line.getX(at), line.getY(at), line.getZ(at), hasZ);
    }
    _out += ']';
}

void Writer::polygon(const OGRPolygon& polygon)
{
    bool isOuter = true;
    list(polygon, [&](const OGRLinearRing* ring) {
        // In GeoJSON outer rings are counter-clockwise and holes are clockwise. In shape files it
        // is the other way round.
        points(*ring, ring->isClockwise() == (isOuter ? TRUE : FALSE));
        isOuter = false;
    });
}

template <class Parts, class Write>
void Writer::list(const Parts& parts, Write write)
{
    _out += '[';
    bool isFirst = true;
    for (const auto* part : parts) {
        if (!isFirst)
            _out += ',';
        isFirst = false;
        write(part);
    }
    _out += ']';
}

template <class Write>
void Writer::member(const char* type, Write write)
{
    _out.append("{\"type\":\"").append(type).append("\",\"coordinates\":");
    write();
    _out += '}';
}

void Writer::object(const OGRGeometry& geometry)
{
    switch (wkbFlatten(geometry.getGeometryType())) {
    case wkbPoint:
        return member("Point", [&] { point(*geometry.toPoint()); });
    case wkbLineString:
        return member("LineString", [&] { points(*geometry.toLineString()); });
    case wkbPolygon:
        return member("Polygon", [&] { polygon(*geometry.toPolygon()); });
    case wkbMultiPoint:
        return member("MultiPoint", [&] {
            list(*geometry.toMultiPoint(), [this](const OGRPoint* part) { point(*part); });
        });
    case wkbMultiLineString:
        return member("MultiLineString", [&] {
            list(*geometry.toMultiLineString(), [this](const auto* part) { points(*part); });
        });
    case wkbMultiPolygon:
        return member("MultiPolygon", [&] {
            list(*geometry.toMultiPolygon(), [this](const auto* part) { polygon(*part); });
        });
    default:
        _isGood = false;
    }
}

/// Converts the shape to one of GeoJSON's kinds: arcs become lines, surfaces become polygons.
std::unique_ptr<OGRGeometry> plainGeometry(const OGRGeometry& geometry)
{
    std::unique_ptr<OGRGeometry> linear(geometry.getLinearGeometry());
    const OGRwkbGeometryType type = wkbFlatten(linear->getGeometryType());
    if (!OGR_GT_IsSubClassOf(type, wkbPolyhedralSurface) && type != wkbTriangle &&
        type != wkbGeometryCollection)
        return linear;
    return std::unique_ptr<OGRGeometry>(OGRGeometryFactory::forceToMultiPolygon(linear.release()));
}

bool isPlain(const OGRGeometry& geometry)
{
    const OGRwkbGeometryType type = wkbFlatten(geometry.getGeometryType());
    return type >= wkbPoint && type < wkbGeometryCollection;
}

} // namespace

bool writeGeometry(const OGRGeometry& geometry, std::string& out)
{
    out.clear();
    if (geometry.IsEmpty())
        return false;
    Writer writer(out);
    if (isPlain(geometry))
        writer.object(geometry);
    else
        writer.object(*plainGeometry(geometry));
    return writer.isGood();
}

} // namespace EmbeddedHV::maps
