#pragma once

#include <optional>
#include <string>

#include "MetadataExport.h"

/// What makes a field geospatial: the kind of its shapes and the coordinate system they stand in.
class METADATA_API CFGeo
{
public:
    /// What the shapes of a geospatial field are made of.
    enum Type : int
    {
        Point = 0,
        MultiPoint = 1,
        LineString = 2,
        MultiLineString = 3,
        Polygon = 4,
        MultiPolygon = 5
    };

    /// Two opposite corners of the rectangle that holds all shapes, in the units of the system.
    struct Envelope
    {
        double leftUpperX = 0;
        double leftUpperY = 0;
        double rightLowerX = 0;
        double rightLowerY = 0;

        friend bool operator==(const Envelope&, const Envelope&) = default;
    };

    /// `coordinates` is how many numbers make a point, 0 if that is not known.
    explicit CFGeo(Type type, int coordinates = 0) : _type(type), _coordinates(coordinates) {}

    /// The coordinate system: its well-known id, -1 for none, its name, whether it is projected,
    /// and its well-known text, empty for none.
    void SetCoordinateSystem(int wkid, std::string csname, bool isProjected, std::string wkt);
    /// An envelope with a corner that is not a number is none.
    void SetEnvelope(const Envelope& envelope);

    Type GetType() const { return _type; }
    int GetCoordinates() const { return _coordinates; }
    int GetWkid() const { return _wkid; }
    const std::string& GetCsname() const { return _csname; }
    bool IsProjected() const { return _isProjected; }
    const std::string& GetWkt() const { return _wkt; }
    const std::optional<Envelope>& GetEnvelope() const { return _envelope; }

    friend bool operator==(const CFGeo&, const CFGeo&) = default;

private:
    Type _type;
    int _coordinates;
    int _wkid = -1;
    std::string _csname;
    bool _isProjected = false;
    std::string _wkt;
    std::optional<Envelope> _envelope;
};

/// The word of the data model document and the engine; null for a value outside the enumeration.
METADATA_API const char* WordOf(CFGeo::Type type);
