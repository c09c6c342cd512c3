#pragma once

#include <map>
#include <string>
#include <vector>

#include "page/MapSpec.h"

/// An area or a point of a map, with what tells of it. Records are borrowed of the sources.
struct MapItem
{
    const PageJson* feature = nullptr; ///< the area, or the record of a point
    const PageJson* row = nullptr;     ///< null for an area that no record tells of
    const PageJson* colour = nullptr;  ///< the value that the colour stands for; null for none
    double size = 0;
};

/// What stands on a layer of a map, and what there was no place for.
struct MapItems
{
    std::vector<MapItem> items;
    std::vector<MapShape> shapes;      ///< one for each item
    std::size_t withoutShape = 0;      ///< areas and points left out, for their places are broken
    std::vector<std::string> unplaced; ///< keys of records without an area
};

/// The sources of a map: GeoJSON texts are read when they are first asked for, and once.
class MapSources
{
public:
    explicit MapSources(const OutputDocument& document) : _document(document) {}

    /// Records or features; an empty list for a text that cannot be read.
    const PageJson& records(const MapSource& source);

private:
    const OutputDocument& _document;
    std::map<std::string, PageJson> _read;
};

/// Brings areas together with their records, or reads points from theirs.
MapItems itemsOf(const MapLayer& layer, MapSources& sources);

/// The value of a field of an item; null if it has none.
const PageJson* valueOf(const MapItem& item, const MapLayer& layer, const std::string& field);
