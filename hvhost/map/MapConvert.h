#pragma once

#include "hvhost/base/CommonOptions.h"
#include "hvhost/map/GeoJsonOptions.h"
#include "hvhost/map/MapOptions.h"

/// The options of map convert.
struct MapConvertOptions
{
    MapOptions map;
    GeoJsonOptions result;
};
/// Writes a source of geometry as GeoJSON.
void mapConvert(const MapConvertOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost map". `common` must outlive them.
void addMapConvertCommand(CLI::App& map, CommonOptions& common);
