#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/map/MapOptions.h"
#include "hvhost/show/ShownOptions.h"

/// The options of map info. For a service without a layer, its layers are listed.
struct MapInfoOptions
{
    MapOptions map;
    ShownOptions shown;
    bool showDataModel = false;
};
/// Shows the metadata of a source of geometry.
void mapInfo(const MapInfoOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost map". `common` must outlive them.
void addMapInfoCommand(CLI::App& map, CommonOptions& common);
