#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/map/GeoJsonOptions.h"

/// The options of map points: a dataset and its variables with coordinates.
struct MapPointsOptions
{
    InputOptions input;
    std::string x;
    std::string y;
    std::string z; ///< empty for points in a plane
    GeoJsonOptions result;
};
/// Writes the points in variables of a dataset as GeoJSON.
void mapPoints(const MapPointsOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost map". `common` must outlive them.
void addMapPointsCommand(CLI::App& map, CommonOptions& common);
