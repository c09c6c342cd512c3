#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "CFField.h"
#include "EngineExport.h"
#include "maps/ShapePoints.h"

/// The engine's interface to maps and coordinate systems. A separate library implements it. The
/// engine loads this library when a job first uses a map, because its dependencies take longer to
/// load than the engine takes to start.
namespace EmbeddedHV::maps {

/// An error in a map source or a coordinate system. The text is one sentence that names it.
class ENGINE_API GeographyError : public std::runtime_error
{
public:
    /// Each kind becomes a different error id of a job.
    enum Kind
    {
        FileMissing,
        Unreadable,
        NotOfItsKind,
        Service,
        TooLarge, ///< an answer of a service is too large; smaller requests may succeed
        UnknownSystem,
        UnknownMethod,
        WrongQuestion,
        Stopped
    };
    GeographyError(Kind kind, const std::string& text) : GeographyError(kind, {}, text) {}
    /// An error in a file.
    GeographyError(Kind kind, const std::string& file, const std::string& problem)
        : std::runtime_error(file.empty() ? problem : file + ": " + problem), _kind(kind),
          _file(file), _problem(problem)
    {
    }
    Kind kind() const { return _kind; }
    /// The path of the file; may be empty.
    const std::string& file() const { return _file; }
    /// The text without the file.
    const std::string& problem() const { return _problem; }

private:
    Kind _kind;
    std::string _file;
    std::string _problem;
};

/// Whether to stop. Long operations call it several times a second and then throw
/// GeographyError::Stopped. An empty function never stops.
using StopWish = std::function<bool()>;

/// Limits for reading a layer of a map service.
struct LayerBounds
{
    /// The largest number of records that will be read; UINT64_MAX for all.
    std::uint64_t wanted = UINT64_MAX;
    /// The largest number of records in the layer: a faulty service may return records for ever. A
    /// larger layer is rejected. Ignored if `wanted` is a number.
    std::uint64_t records = 10'000'000;
    /// The largest size of all answers together. Always applies.
    std::uint64_t bytes = std::uint64_t{16} << 30;
    /// The largest number of values in one answer, which is held in memory. If an answer has more,
    /// fewer records are requested at a time. A list or an object counts as two.
    std::size_t values = 5'000'000;
};

/// A coordinate system: its well-known id, its name and its WKT text.
struct CoordinateSystem
{
    int wkid = -1; ///< -1 if it has no id
    std::string name;
    std::string wkt;
    bool isProjected = false;

    friend bool operator==(const CoordinateSystem&, const CoordinateSystem&) = default;
};

/// An area in degrees. If west > east, it crosses the antimeridian.
struct Area
{
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;
};

/// A transformation between two datums, or its inverse.
struct TransformationMethod
{
    std::string name;
    bool isForward = true;
};

/// A system that suits an area, and the transformations to it.
struct RecommendedSystem
{
    CoordinateSystem system;
    std::vector<TransformationMethod>
        methods; ///< from degrees to the system; empty if the datums are equal
};

/// A value of a record. The storage of its field determines which member holds it.
struct LayerValue
{
    bool isMissing = true;
    /// An integer; a date in days; a time or a timestamp in microseconds, as database columns hold
    /// them.
    std::int64_t integer = 0;
    double real = 0;
    std::string text;
};

/// The records of a shape file or of a layer of a map service. The last field is geospatial: each
/// value is a GeoJSON geometry object. One thread at a time. May throw GeographyError.
class Layer
{
public:
    virtual ~Layer() = default;
    virtual const std::vector<CFField>& fields() const = 0;
    /// Goes back before the first record. `wanted` are the fields that will be read.
    virtual void rewind(const std::vector<std::size_t>& wanted) = 0;
    /// Moves to the next record. Returns false at the end.
    virtual bool next() = 0;
    virtual void read(std::size_t field, LayerValue& value) = 0;
    /// Reads the value of the last field as points. Returns false if it is missing; `shape` is then
    /// undefined.
    virtual bool readShape(Shape& shape) = 0;
};

/// Transforms points between two coordinate systems. One thread at a time.
class PointMover
{
public:
    virtual ~PointMover() = default;
    /// Transforms points in place. A point that does not exist in the target system becomes
    /// infinite.
    virtual void move(double* x, double* y, double* z, std::size_t count) = 0;
    /// Whether points go from a plane to degrees on the globe. Then neighbours may become distant
    /// in longitude.
    virtual bool leadsToGlobe() const { return false; }
    /// Cuts a GeoJSON geometry in degrees at the antimeridian, and closes shapes that contain a
    /// pole along it. Returns false if it cannot; the text is then unchanged.
    virtual bool cutAtAntimeridian(std::string&) { return false; }
    /// The rectangle in the target system that contains the given one; empty if it does not exist
    /// there.
    virtual std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& envelope) = 0;
};

/// Any thread. Every operation throws GeographyError if it fails.
class Geography
{
public:
    virtual ~Geography() = default;

    virtual std::unique_ptr<Layer> openShapeFile(const std::string& path) = 0;
    virtual std::unique_ptr<Layer> openServiceLayer(const std::string& url, int layer,
                                                    const LayerBounds& bounds, StopWish stop) = 0;
    /// The layers of a map service, as a JSON array.
    virtual std::string serviceLayers(const std::string& url, StopWish stop) = 0;

    /// Alphabetical.
    virtual std::vector<std::string> systemNames(bool projected) = 0;
    virtual CoordinateSystem systemNamed(const std::string& name) = 0;
    virtual CoordinateSystem systemOf(int wkid) = 0;
    /// The projected systems whose area of use contains the area, the smallest first.
    virtual std::vector<RecommendedSystem> recommend(const Area& area, std::size_t most) = 0;
    /// `method` names a datum transformation; empty for the best one.
    virtual std::unique_ptr<PointMover>
    mover(const CoordinateSystem& from, const CoordinateSystem& to, const std::string& method) = 0;

    /// A library that implements this interface: its name, version and data folder.
    struct Library
    {
        std::string name;
        std::string version;
        std::string data;
    };
    virtual std::vector<Library> libraries() = 0;
};

/// The name of the function through which the library returns its only Geography.
inline constexpr const char* kGeographyFunction = "hvGeography";
using GeographyFunction = Geography* (*)();

} // namespace EmbeddedHV::maps
