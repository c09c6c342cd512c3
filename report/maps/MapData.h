#pragma once

#include <map>
#include <string>
#include <vector>

#include "report/maps/MapSpec.h"

/// An area or point of a map with its record. Records are borrowed from the sources.
struct MapItem
{
    const PageJson* feature = nullptr; ///< the area, or the record of a point
    const PageJson* row = nullptr;     ///< null for an area without a record
    const PageJson* colour = nullptr;  ///< the value for the colour; null for none
    double size = 0;
};

/// The items of a map's layer, and what could not be placed.
struct MapItems
{
    std::vector<MapItem> items;
    std::vector<MapShape> shapes;      ///< one for each item
    std::size_t withoutShape = 0;      ///< areas and points left out because of invalid geometry
    std::vector<std::string> unplaced; ///< keys of records without an area
};

/// The sources of a map. A GeoJSON text is parsed once, on first use.
class MapSources
{
public:
    explicit MapSources(const OutputDocument& document) : _document(document) {}

    /// Records or features; an empty list if the text cannot be parsed.
    const PageJson& records(const MapSource& source);

private:
    const OutputDocument& _document;
    std::map<std::string, PageJson> _read;
};

/// Joins areas with their records, or reads points from records.
MapItems itemsOf(const MapLayer& layer, MapSources& sources);

/// The value of an item's field; null if it has none.
const PageJson* valueOf(const MapItem& item, const MapLayer& layer, const std::string& field);
