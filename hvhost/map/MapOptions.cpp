#include "hvhost/map/MapOptions.h"

#include <CLI/CLI.hpp>

#include "hvhost/input/OptionChecks.h"

void addMap(CLI::App& app, MapOptions& options)
{
    app.add_option(
           "MAP", options.source,
           "A shape file, a zip archive with a shape file of its\nname, or the address of a "
           "map service")
        ->type_name("FILE|URL")
        ->required()
        ->check(notEmpty());
    app.add_option("--layer", options.layer, "The layer of a map service, by its id")
        ->type_name("ID")
        ->check(wholeNumberFrom(0))
        ->group("Map");
}
