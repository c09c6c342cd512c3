#include "hvhost/map/MapPoints.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addMapPointsCommand(CLI::App& map, CommonOptions& common)
{
    const auto options = std::make_shared<MapPointsOptions>();
    CLI::App* const app =
        newCommand(map, "points", "Write the points of a dataset as GeoJSON.",
                   "  hvhost map points colonies.csv --x east --y north --from 4326 out.geojson\n"
                   "  hvhost map points colonies.csv --x east --y north --from 4326 --to 3031 -\n");
    addMapData(*app, options->input);
    addGeoJson(*app, options->result,
               "The coordinate system of the points; CARTESIAN, the\ndefault, means planar "
               "coordinates without a system");
    const auto add = [app](const char* name, std::string& value, const char* purpose) {
        return app->add_option(name, value, purpose)
            ->type_name("VARIABLE")
            ->check(notEmpty())
            ->group("Points");
    };
    add("--x", options->x, "The coordinate to the east")->required();
    add("--y", options->y, "The coordinate to the north")->required();
    add("--z", options->z, "The height");
    addCommonOptions(*app, common);
    app->callback([options, &common] { mapPoints(*options, common); });
}
