#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

/// A source of geometry: a shape file, a zip archive with one, or a layer of a map service.
struct MapOptions
{
    std::string source; ///< a file, or an address with "://"
    std::optional<int> layer;
};

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

/// The coordinate systems, each a name, an id or empty, and the output.
struct GeoJsonOptions
{
    std::string from;
    std::string to;
    std::string output;    ///< "-" for standard output
    std::string dataModel; ///< empty for none
    bool force = false;
};
/// The options of map convert.
struct MapConvertOptions
{
    MapOptions map;
    GeoJsonOptions result;
};
/// Writes a source of geometry as GeoJSON.
void mapConvert(const MapConvertOptions& options, const CommonOptions& common);

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

/// The options of map match: a map, a dataset, and the fields that are matched.
struct MapMatchOptions
{
    MapOptions map;
    InputOptions input;
    std::vector<std::string> keys; ///< MAPFIELD=VARIABLE, or one name for both
    int limit = 20;                ///< rows of each list, -1 for all
    std::string format = "text";   ///< text, csv or json
    long long width = 0;           ///< of text; 0: the width of the terminal
};
/// Shows how well the keys of a map match those of a dataset.
void mapMatch(const MapMatchOptions& options, const CommonOptions& common);
