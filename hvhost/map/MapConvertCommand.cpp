#include "hvhost/map/MapConvert.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionGroups.h"

void addMapConvertCommand(CLI::App& map, CommonOptions& common)
{
    const auto options = std::make_shared<MapConvertOptions>();
    CLI::App* const app = newCommand(map, "convert", "Write a source of geometry as GeoJSON.",
                                     "  hvhost map convert islands.shp islands.geojson\n"
                                     "  hvhost map convert islands.shp - --to 3031\n");
    addMap(*app, options->map);
    addGeoJson(*app, options->result,
               "The coordinate system of the source, if the source\nitself has none; with --to");
    addCommonOptions(*app, common);
    app->callback([options, &common] { mapConvert(*options, common); });
}
