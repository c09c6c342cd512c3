#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/TextRequest.h"
#include "hvhost/map/MapOptions.h"

/// The options of map match: a map, a dataset, and the fields that are matched.
struct MapMatchOptions
{
    MapOptions map;
    InputOptions input;
    std::vector<std::string> keys; ///< MAPFIELD=VARIABLE, or one name for both
    int limit = 20;                ///< rows of each list, -1 for all
    std::string format = "text";   ///< text, csv or json
    TextRequest text;
};
/// Shows how well the keys of a map match those of a dataset.
void mapMatch(const MapMatchOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost map". `common` must outlive them.
void addMapMatchCommand(CLI::App& map, CommonOptions& common);
