#pragma once

#include "hvhost/map/MapOptions.h"

namespace CLI {
class App;
}

/// The commands of "hvhost map" and their options.
class MapCommandLine
{
public:
    /// Adds the commands to the application. This object and `common` must outlive it.
    void addTo(CLI::App& app, CommonOptions& common);

private:
    void addInfo(CLI::App& map, CommonOptions& common);
    void addConvert(CLI::App& map, CommonOptions& common);
    void addPoints(CLI::App& map, CommonOptions& common);
    void addMatch(CLI::App& map, CommonOptions& common);

    MapInfoOptions _info;
    MapConvertOptions _convert;
    MapPointsOptions _points;
    MapMatchOptions _match;
};
