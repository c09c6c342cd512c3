#include "hvhost/map/MapInfo.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addMapInfoCommand(CLI::App& map, CommonOptions& common)
{
    const auto options = std::make_shared<MapInfoOptions>();
    CLI::App* const app = newCommand(map, "info", "Show the metadata of a source of geometry.",
                                     "  hvhost map info islands.shp\n"
                                     "  hvhost map info islands.shp --format json\n"
                                     "  hvhost map info islands.shp -o islands.html\n");
    addMap(*app, options->map);
    addShownOptions(
        *app, options->shown,
        {{"text", "csv", "json", "html"},
         "The form; html is a page with the map. By default the\nextension of the file: "
         ".csv, .json or .html; else text",
         "Write it to this file",
         ""});
    app->add_flag("--data-model", options->showDataModel, "Show the data model document instead");
    addCommonOptions(*app, common);
    app->callback([options, &common] { mapInfo(*options, common); });
}
