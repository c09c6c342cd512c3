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

/// Shapes and coordinate systems as the engine sees them. What implements this stands in a library
/// of its own, which is loaded when a job first asks for a map: the libraries behind it take longer
/// to load than the engine takes to start.
namespace EmbeddedHV::maps {

/// What is wrong with a map source or a coordinate system: one sentence that names it.
class ENGINE_API GeographyError : public std::runtime_error
{
public:
    /// Each kind becomes another error of a job.
    enum Kind
    {
        FileMissing,
        Unreadable,
        NotOfItsKind,
        Service,
        TooLarge, ///< an answer of a service, which may give less at a time
        UnknownSystem,
        UnknownMethod,
        WrongQuestion,
        Stopped
    };
    GeographyError(Kind kind, const std::string& text) : std::runtime_error(text), _kind(kind) {}
    Kind kind() const { return _kind; }

private:
    Kind _kind;
};

/// Asked several times a second while something takes long: whether to end it, with
/// GeographyError::Stopped. Empty for what nobody stops.
using StopWish = std::function<bool()>;

/// How much of a layer of a map service is read.
struct LayerBounds
{
    /// How many records at most will be asked for; UINT64_MAX for all of them.
    std::uint64_t wanted = UINT64_MAX;
    /// A layer that does not end by then is refused: a service may make up records for ever. Does
    /// not count where `wanted` says how many records are read.
    std::uint64_t records = 10'000'000;
    /// The same for the size of all answers together, whatever is wanted.
    std::uint64_t bytes = std::uint64_t{16} << 30;
    /// For one answer, which is held in memory: where a page has more values, fewer records are
    /// asked for at a time. A list or an object counts as two.
    std::size_t values = 5'000'000;
};

/// A coordinate system by its id, its name and its text; ids are well-known ones.
struct CoordinateSystem
{
    int wkid = -1; ///< -1 for a system that has none
    std::string name;
    std::string wkt;
    bool isProjected = false;

    friend bool operator==(const CoordinateSystem&, const CoordinateSystem&) = default;
};

/// A part of the world, in degrees. It crosses the antimeridian if west is east of east.
struct Area
{
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;
};

/// A way from one datum to another, and whether it is the way or its inverse that is gone.
struct TransformationMethod
{
    std::string name;
    bool isForward = true;
};

/// A system that suits an area, with the ways into it.
struct RecommendedSystem
{
    CoordinateSystem system;
    std::vector<TransformationMethod> methods; ///< to it from degrees; none if the datums agree
};

/// A value of a record: the member that the storage of its field stands for.
struct LayerValue
{
    bool isMissing = true;
    /// An integer; a date in days, a time and a timestamp in microseconds, as columns hold them.
    std::int64_t integer = 0;
    double real = 0;
    std::string text;
};

/// The records of a file of shapes or of a layer of a map service. The last field is geospatial:
/// texts, each a geometry object as GeoJSON has it. One thread at a time; may throw GeographyError.
class Layer
{
public:
    virtual ~Layer() = default;
    virtual const std::vector<CFField>& fields() const = 0;
    /// Back to before the first record; `wanted` are the fields that will be asked for.
    virtual void rewind(const std::vector<std::size_t>& wanted) = 0;
    /// Moves to the next record. False at the end.
    virtual bool next() = 0;
    virtual void read(std::size_t field, LayerValue& value) = 0;
};

/// Moves points from one coordinate system to another. One thread at a time.
class PointMover
{
public:
    virtual ~PointMover() = default;
    /// A point that has no place in the other system is infinite afterwards.
    virtual void move(double* x, double* y, double* z, std::size_t count) = 0;
    /// Whether the points come to lie on the globe, in degrees, from a plane: neighbours there may
    /// be far apart in longitude here.
    virtual bool leadsToGlobe() const { return false; }
    /// Cuts a GeoJSON geometry in degrees where it crosses the antimeridian, and closes what holds
    /// a pole along it. False if it cannot; the text stays then.
    virtual bool cutAtAntimeridian(std::string&) { return false; }
    /// The rectangle that holds whatever the given one held.
    virtual std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& envelope) = 0;
};

/// Any thread. What it cannot do throws GeographyError.
class Geography
{
public:
    virtual ~Geography() = default;

    virtual std::unique_ptr<Layer> openShapeFile(const std::string& path) = 0;
    virtual std::unique_ptr<Layer> openServiceLayer(const std::string& url, int layer,
                                                    const LayerBounds& bounds, StopWish stop) = 0;
    /// The layers of a map service, as a JSON array.
    virtual std::string serviceLayers(const std::string& url, StopWish stop) = 0;

    /// In the order of the alphabet.
    virtual std::vector<std::string> systemNames(bool projected) = 0;
    virtual CoordinateSystem systemNamed(const std::string& name) = 0;
    virtual CoordinateSystem systemOf(int wkid) = 0;
    /// The projected systems whose area of use holds the area, the smallest first.
    virtual std::vector<RecommendedSystem> recommend(const Area& area, std::size_t most) = 0;
    /// `method` names a transformation between the datums; empty for the best one.
    virtual std::unique_ptr<PointMover>
    mover(const CoordinateSystem& from, const CoordinateSystem& to, const std::string& method) = 0;

    /// Name, version and place of data of the libraries behind this.
    struct Library
    {
        std::string name;
        std::string version;
        std::string data;
    };
    virtual std::vector<Library> libraries() = 0;
};

/// The name of the function by which the library hands out its one Geography.
inline constexpr const char* kGeographyFunction = "hvGeography";
using GeographyFunction = Geography* (*)();

} // namespace EmbeddedHV::maps
