#pragma once

#include <optional>
#include <string>

#include "MetadataExport.h"

/// Geospatial properties of a field: the kind of its shapes and their coordinate system. A value
/// type.
class METADATA_API CFGeo
{
public:
    /// Kinds of shapes.
    enum Type : int
    {
        Point = 0,
        MultiPoint = 1,
        LineString = 2,
        MultiLineString = 3,
        Polygon = 4,
        MultiPolygon = 5
    };

    /// Two opposite corners of the rectangle that contains all shapes, in the units of the system.
    struct Envelope
    {
        double leftUpperX = 0;  ///< left edge, in the units of the coordinate system
        double leftUpperY = 0;  ///< upper edge
        double rightLowerX = 0; ///< right edge
        double rightLowerY = 0; ///< lower edge

        friend bool operator==(const Envelope&, const Envelope&) = default;
    };

    /// `coordinates` is the count of numbers per point; 0 if unknown.
    explicit CFGeo(Type type, int coordinates = 0) : _type(type), _coordinates(coordinates) {}

    /// Sets the coordinate system: its well-known id (-1 for none), its name, whether it is
    /// projected, and its well-known text (empty for none).
    void SetCoordinateSystem(int wkid, std::string csname, bool isProjected, std::string wkt);
    /// Sets the envelope. NaN in a corner removes it.
    void SetEnvelope(const Envelope& envelope);

    /// The kind of the shapes.
    Type GetType() const { return _type; }
    /// The count of numbers per point; 0 if unknown.
    int GetCoordinates() const { return _coordinates; }
    /// The well-known id of the coordinate system; -1 for none.
    int GetWkid() const { return _wkid; }
    /// The name of the coordinate system; empty for none.
    const std::string& GetCsname() const { return _csname; }
    /// Whether the coordinate system is projected.
    bool IsProjected() const { return _isProjected; }
    /// The well-known text of the coordinate system; empty for none.
    const std::string& GetWkt() const { return _wkt; }
    /// The envelope, if it is set.
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

/// The word of the data model and the engine; null for a value outside the enumeration.
METADATA_API const char* WordOf(CFGeo::Type type);
