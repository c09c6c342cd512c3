#include "maps/ShapeText.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/NumberText.h"
#include "maps/PlainShape.h"
#include "maps/ShapePoints.h"

namespace EmbeddedHV::maps {
namespace {

/// Parses a geometry object. Members other than type and coordinates are dropped: a bounding box or
/// a coordinate system would no longer be right.
class ShapeReader : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit ShapeReader(Shape& shape) : _shape(shape) {}
    bool isWhole() const
    {
        const Kind* const kind = kindOf(_shape.kind);
        return _hasCoordinates && kind != nullptr &&
               (_pointDepth == 0 || kind->depth == _pointDepth);
    }

    bool null() override { return plain(); }
    bool boolean(bool) override { return plain(); }
    bool number_integer(number_integer_t value) override
    {
        return number(static_cast<double>(value));
    }
    bool number_unsigned(number_unsigned_t value) override
    {
        return number(static_cast<double>(value));
    }
    bool number_float(number_float_t value, const string_t&) override { return number(value); }
    bool string(string_t& value) override
    {
        if (_objects == 1 && _key == "type" && _lists == 0)
            _shape.kind = value;
        return plain();
    }
    bool binary(binary_t&) override { return false; }
    bool key(string_t& name) override
    {
        if (_objects == 1 && _lists == 0)
            _key = name;
        return _key != "coordinates" || !_hasCoordinates || _objects > 1;
    }
    bool start_object(std::size_t) override
    {
        const bool fits = !inCoordinates();
        ++_objects;
        return fits;
    }
    bool end_object() override
    {
        --_objects;
        return true;
    }
    bool start_array(std::size_t) override;
    bool end_array() override;
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override
    {
        return false;
    }

private:
    bool inCoordinates() const { return _lists > 0 && _objects == 1 && _key == "coordinates"; }
    /// Values that are not numbers are invalid inside the coordinates and instead of them.
    bool plain() const { return !(_objects == 1 && _key == "coordinates"); }
    bool number(double value);
    bool endPoint();

    Shape& _shape;
    std::string _key;
    std::size_t _objects = 0;
    std::size_t _lists = 0;
    std::size_t _pointDepth = 0; ///< 0 before the first point
    std::vector<double> _numbers;
    bool _hasCoordinates = false;
};

bool ShapeReader::number(double value)
{
    if (!inCoordinates())
        return plain();
    if (_pointDepth == 0)
        _pointDepth = _lists;
    _numbers.push_back(value);
    return _lists == _pointDepth;
}

bool ShapeReader::start_array(std::size_t)
{
    ++_lists;
    if (!inCoordinates())
        return _objects > 0;
    _hasCoordinates = true;
    if (!_numbers.empty() || (_pointDepth > 0 && _lists > _pointDepth))
        return false;
    if (!_shape.lists.empty() && _shape.lists.back() == ']')
        _shape.lists += ',';
    _shape.lists += '[';
    return true;
}

bool ShapeReader::endPoint()
{
    if (_numbers.size() < 2)
        return false;
    _shape.places.push_back(_shape.lists.size());
    _shape.x.push_back(_numbers[0]);
    _shape.y.push_back(_numbers[1]);
    // Numbers after the third are measures. GeoJSON has no place for them.
    _shape.hasZ.push_back(_numbers.size() > 2 ? 1 : 0);
    _shape.z.push_back(_numbers.size() > 2 ? _numbers[2] : 0);
    _numbers.clear();
    return true;
}

bool ShapeReader::end_array()
{
    const bool counts = inCoordinates();
    if (counts && _lists == _pointDepth && !endPoint())
        return false;
    if (counts && _lists + 1 == _pointDepth)
        _shape.ends.push_back(_shape.places.size());
    if (counts)
        _shape.lists += ']';
    --_lists;
    return true;
}

bool readShape(std::string_view text, Shape& shape)
{
    shape.clear();
    if (scanPlainShape(text, shape))
        return true;
    shape.clear();
    ShapeReader reader(shape);
    return nlohmann::json::sax_parse(text, &reader) && reader.isWhole();
}

void write(const Shape& shape, std::string& out)
{
    out.assign("{\"type\":\"").append(shape.kind).append("\",\"coordinates\":");
    std::size_t written = 0;
    for (std::size_t i = 0; i < shape.places.size(); ++i) {
        out.append(shape.lists, written, shape.places[i] - written);
        written = shape.places[i];
        base::appendNumber(out, shape.x[i]);
        out += ',';
        base::appendNumber(out, shape.y[i]);
        if (shape.hasZ[i]) {
            out += ',';
            base::appendNumber(out, shape.z[i]);
        }
    }
    out.append(shape.lists, written).append("}");
}

bool isFinite(const std::vector<double>& values)
{
    return std::ranges::all_of(values, [](double value) { return std::isfinite(value); });
}

/// Calls `visit` for each list of points with the index of its first point and the index after its
/// last.
template <class Visit>
void forEachLine(const Shape& shape, Visit visit)
{
    std::size_t begin = 0;
    for (const std::size_t end : shape.ends) {
        visit(begin, end);
        begin = end;
    }
}

/// For each ring whether it is clockwise; empty for a shape without rings.
void findDirections(const Shape& shape, std::vector<char>& areClockwise)
{
    areClockwise.clear();
    if (!shape.hasRings())
        return;
    forEachLine(shape, [&](std::size_t begin, std::size_t end) {
        double area = 0;
        // Relative to the first point, because large coordinates would cancel each other out.
        for (std::size_t i = begin; i + 1 < end; ++i)
            area += (shape.x[i] - shape.x[begin]) * (shape.y[i + 1] - shape.y[begin]) -
                    (shape.x[i + 1] - shape.x[begin]) * (shape.y[i] - shape.y[begin]);
        areClockwise.push_back(area < 0 ? 1 : 0);
    });
}

template <class Values>
void reverse(Values& values, std::size_t begin, std::size_t end)
{
    std::reverse(values.begin() + static_cast<std::ptrdiff_t>(begin),
                 values.begin() + static_cast<std::ptrdiff_t>(end));
}

/// Reverses the rings whose direction has changed.
void turnBack(Shape& shape, const std::vector<char>& before, const std::vector<char>& after)
{
    std::size_t ring = 0;
    forEachLine(shape, [&](std::size_t begin, std::size_t end) {
        if (ring < after.size() && after[ring] != before[ring]) {
            reverse(shape.x, begin, end);
            reverse(shape.y, begin, end);
            reverse(shape.z, begin, end);
            reverse(shape.hasZ, begin, end);
        }
        ++ring;
    });
}

/// Whether two neighbouring points of a line are more than half the globe apart. Then the line
/// crosses the antimeridian instead.
bool crossesAntimeridian(const Shape& shape)
{
    constexpr double kHalf = 180;
    bool crosses = false;
    if (shape.hasLines())
        forEachLine(shape, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i + 1 < end; ++i)
                crosses = crosses || std::fabs(shape.x[i + 1] - shape.x[i]) > kHalf;
        });
    return crosses;
}

} // namespace

MovedShape ShapeMover::move(std::string_view text, std::string& out)
{
    return readShape(text, _shape) ? movePoints(_shape, out) : MovedShape::NotAShape;
}

MovedShape ShapeMover::movePoints(Shape& shape, std::string& out)
{
    findDirections(shape, _before);
    _points->move(shape.x.data(), shape.y.data(), shape.z.data(), shape.x.size());
    if (!isFinite(shape.x) || !isFinite(shape.y) || !isFinite(shape.z))
        return MovedShape::Lost;
    findDirections(shape, _after);
    turnBack(shape, _before, _after);
    write(shape, out);
    if (!_points->leadsToGlobe() || !crossesAntimeridian(shape))
        return MovedShape::Moved;
    return _points->cutAtAntimeridian(out) ? MovedShape::Moved : MovedShape::Lost;
}

bool isShape(std::string_view text)
{
    if (isPlainShape(text))
        return true;
    Shape shape;
    return readShape(text, shape);
}

} // namespace EmbeddedHV::maps
