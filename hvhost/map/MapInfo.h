#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/map/MapOptions.h"

/// The options of map info. For a service without a layer, its layers are listed.
struct MapInfoOptions
{
    MapOptions map;
    std::string format; ///< text, csv, json or html; empty: from the name of the output, else text
    std::string output; ///< empty for standard output
    bool force = false;
    long long width = 0; ///< of text; 0: the width of the terminal
    bool showDataModel = false;
};
/// Shows the metadata of a source of geometry.
void mapInfo(const MapInfoOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost map". `common` must outlive them.
void addMapInfoCommand(CLI::App& map, CommonOptions& common);
