#include "GeometryWriter.h"

#include <cmath>
#include <memory>

#include <ogr_geometry.h>

#include "base/NumberText.h"

namespace EmbeddedHV::maps {
namespace {

/// A geometry object as text.
class ObjectText
{
public:
    explicit ObjectText(std::string& out) : _out(out) {}

    void begin(const char* kind)
    {
        _out.append("{\"type\":\"").append(kind).append("\",\"coordinates\":");
    }
    void put(char sign) { _out += sign; }
    void numbers(double x, double y, const double* z)
    {
        base::appendNumber(_out, x);
        _out += ',';
        base::appendNumber(_out, y);
        if (z) {
            _out += ',';
            base::appendNumber(_out, *z);
        }
    }
    void endLine() {}
    void end() { _out += '}'; }

private:
    std::string& _out;
};

/// A geometry object as points.
class ObjectPoints
{
public:
    explicit ObjectPoints(Shape& shape) : _shape(shape) {}

    void begin(const char* kind) { _shape.kind = kind; }
    void put(char sign) { _shape.lists += sign; }
    void numbers(double x, double y, const double* z)
    {
        _shape.places.push_back(_shape.lists.size());
        _shape.x.push_back(x);
        _shape.y.push_back(y);
        _shape.z.push_back(z ? *z : 0);
        _shape.hasZ.push_back(z ? 1 : 0);
    }
    void endLine() { _shape.ends.push_back(_shape.places.size()); }
    void end() {}

private:
    Shape& _shape;
};

/// Writes a geometry object and records whether everything could be written.
template <class Object>
class Writer
{
public:
    explicit Writer(Object out) : _out(out) {}
    bool isGood() const { return _isGood; }

    void object(const OGRGeometry& geometry);

private:
    void position(double x, double y, double z, bool hasZ);
    void point(const OGRPoint& point);
    void points(const OGRSimpleCurve& line, bool backwards = false);
    void polygon(const OGRPolygon& polygon);
    template <class Parts, class Write>
    void list(const Parts& parts, Write write);
    template <class Write>
    void member(const char* kind, Write write);

    Object _out;
    bool _isGood = true;
};

template <class Object>
void Writer<Object>::position(double x, double y, double z, bool hasZ)
{
    _out.put('[');
    if (std::isfinite(x) && std::isfinite(y) && (!hasZ || std::isfinite(z)))
        _out.numbers(x, y, hasZ ? &z : nullptr);
    else
        _isGood = false;
    _out.put(']');
}

template <class Object>
void Writer<Object>::point(const OGRPoint& point)
{
    position(point.getX(), point.getY(), point.getZ(), point.Is3D());
}

template <class Object>
void Writer<Object>::points(const OGRSimpleCurve& line, bool backwards)
{
    const int count = line.getNumPoints();
    const bool hasZ = line.Is3D();
    _out.put('[');
    for (int i = 0; i < count; ++i) {
        const int at = backwards ? count - 1 - i : i;
        if (i > 0)
            _out.put(',');
        position(line.getX(at), line.getY(at), line.getZ(at), hasZ);
    }
    _out.put(']');
    _out.endLine();
}

template <class Object>
void Writer<Object>::polygon(const OGRPolygon& polygon)
{
    bool isOuter = true;
    list(polygon, [&](const OGRLinearRing* ring) {
        // In GeoJSON outer rings are counter-clockwise and holes are clockwise. In shape files it
        // is the other way round.
        points(*ring, ring->isClockwise() == (isOuter ? TRUE : FALSE));
        isOuter = false;
    });
}

template <class Object>
template <class Parts, class Write>
void Writer<Object>::list(const Parts& parts, Write write)
{
    _out.put('[');
    bool isFirst = true;
    for (const auto* part : parts) {
        if (!isFirst)
            _out.put(',');
        isFirst = false;
        write(part);
    }
    _out.put(']');
}

template <class Object>
template <class Write>
void Writer<Object>::member(const char* kind, Write write)
{
    _out.begin(kind);
    write();
    _out.end();
}

template <class Object>
void Writer<Object>::object(const OGRGeometry& geometry)
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
            _out.endLine();
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

/// Returns false if the shape is empty or cannot be written.
template <class Object>
bool writeObject(const OGRGeometry& geometry, Object out)
{
    if (geometry.IsEmpty())
        return false;
    Writer<Object> writer(out);
    if (isPlain(geometry))
        writer.object(geometry);
    else
        writer.object(*plainGeometry(geometry));
    return writer.isGood();
}

} // namespace

bool writeGeometry(const OGRGeometry& geometry, std::string& out)
{
    out.clear();
    return writeObject(geometry, ObjectText(out));
}

bool readGeometry(const OGRGeometry& geometry, Shape& shape)
{
    shape.clear();
    return writeObject(geometry, ObjectPoints(shape));
}

} // namespace EmbeddedHV::maps
