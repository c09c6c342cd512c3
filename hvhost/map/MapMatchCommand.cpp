#include "hvhost/map/MapMatch.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addMapMatchCommand(CLI::App& map, CommonOptions& common)
{
    const auto options = std::make_shared<MapMatchOptions>();
    CLI::App* const app =
        newCommand(map, "match", "Show how well the keys of a map match those of a dataset.",
                   "  hvhost map match islands.shp penguins.csv --keys KEY=island\n"
                   "  hvhost map match islands.shp penguins.csv --keys KEY=island --format json\n");
    addMap(*app, options->map);
    addMapData(*app, options->input);
    app->add_option("--keys", options->keys,
                    "Fields of the map and the variables that they match,\nor names for both, "
                    "separated by commas")
        ->type_name("FIELD=VARIABLE")
        ->required()
        ->delimiter(',')
        ->allow_extra_args(false)
        ->group("Map");
    app->add_option("--limit", options->limit,
                    "Show at most N combinations of keys that only one side\nhas; 20 by default, "
                    "-1 for all")
        ->type_name("N")
        ->check(wholeNumberFrom(-1))
        ->group("Map");
    app->add_option("--format", options->format, "The form of the output")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addTextOptions(*app, options->text);
    addCommonOptions(*app, common);
    app->callback([options, &common] { mapMatch(*options, common); });
}
