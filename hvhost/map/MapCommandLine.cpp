#include "hvhost/map/MapCommandLine.h"

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

namespace {

/// Adds the argument for the source of geometry.
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

void addFormat(CLI::App& app, std::string& format)
{
    app.add_option("--format", format, "The form of the output")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
}

/// Adds the output file and the systems. The default of the source's system differs between
/// commands.
void addResult(CLI::App& app, GeoJsonOptions& options, const char* from)
{
    app.add_option("OUT,-o", options.output, "The GeoJSON file to write; - for standard output")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    const auto add = [&app](const char* name, std::string& value, const char* shown,
                            const char* purpose) {
        app.add_option(name, value, purpose)->type_name(shown)->check(notEmpty())->group("Output");
    };
    add("--from", options.from, "SYSTEM", from);
    add("--to", options.to, "SYSTEM",
        "The coordinate system of the result, by name or id,\nfor example 4326; by default that of "
        "the source");
    add("--out-data-model", options.dataModel, "FILE", "Write the data model document here");
    app.add_flag("--force", options.force, "Replace existing files")->group("Output");
}

} // namespace

void MapCommandLine::addTo(CLI::App& app, CommonOptions& common)
{
    CLI::App* const map =
        newCommandGroup(app, "map", "Show maps, write them as GeoJSON, match their keys.");
    addInfo(*map, common);
    addConvert(*map, common);
    addPoints(*map, common);
    addMatch(*map, common);
}

void MapCommandLine::addInfo(CLI::App& map, CommonOptions& common)
{
    CLI::App* const app = newCommand(map, "info", "Show the metadata of a source of geometry.",
                                     "  hvhost map info islands.shp\n"
                                     "  hvhost map info islands.shp --format json\n"
                                     "  hvhost map info islands.shp -o islands.html\n");
    addMap(*app, _info.map);
    app->add_option(
           "--format", _info.format,
           "The form; html is a page with the map. By default the\nextension of the file: .csv, "
           ".json or .html; else text")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json", "html"}));
    app->add_option("-o", _info.output, "Write it to this file")
        ->type_name("FILE")
        ->check(notEmpty());
    app->add_flag("--force", _info.force, "Replace an existing file");
    addWidth(*app, _info.width);
    app->add_flag("--data-model", _info.showDataModel, "Show the data model document instead");
    addCommonOptions(*app, common);
    app->callback([this, &common] { mapInfo(_info, common); });
}

void MapCommandLine::addConvert(CLI::App& map, CommonOptions& common)
{
    CLI::App* const app = newCommand(map, "convert", "Write a source of geometry as GeoJSON.",
                                     "  hvhost map convert islands.shp islands.geojson\n"
                                     "  hvhost map convert islands.shp - --to 3031\n");
    addMap(*app, _convert.map);
    addResult(*app, _convert.result,
              "The coordinate system of the source, if the source\nitself has none; with --to");
    addCommonOptions(*app, common);
    app->callback([this, &common] { mapConvert(_convert, common); });
}

void MapCommandLine::addPoints(CLI::App& map, CommonOptions& common)
{
    CLI::App* const app =
        newCommand(map, "points", "Write the points of a dataset as GeoJSON.",
                   "  hvhost map points colonies.csv --x east --y north --from 4326 out.geojson\n"
                   "  hvhost map points colonies.csv --x east --y north --from 4326 --to 3031 -\n");
    addMapData(*app, _points.input);
    addResult(*app, _points.result,
              "The coordinate system of the points; CARTESIAN, the\ndefault, means planar "
              "coordinates without a system");
    const auto add = [app](const char* name, std::string& value, const char* purpose) {
        return app->add_option(name, value, purpose)
            ->type_name("VARIABLE")
            ->check(notEmpty())
            ->group("Points");
    };
    add("--x", _points.x, "The coordinate to the east")->required();
    add("--y", _points.y, "The coordinate to the north")->required();
    add("--z", _points.z, "The height");
    addCommonOptions(*app, common);
    app->callback([this, &common] { mapPoints(_points, common); });
}

void MapCommandLine::addMatch(CLI::App& map, CommonOptions& common)
{
    CLI::App* const app =
        newCommand(map, "match", "Show how well the keys of a map match those of a dataset.",
                   "  hvhost map match islands.shp penguins.csv --keys KEY=island\n"
                   "  hvhost map match islands.shp penguins.csv --keys KEY=island --format json\n");
    addMap(*app, _match.map);
    addMapData(*app, _match.input);
    app->add_option("--keys", _match.keys,
                    "Fields of the map and the variables that they match,\nor names for both, "
                    "separated by commas")
        ->type_name("FIELD=VARIABLE")
        ->required()
        ->delimiter(',')
        ->allow_extra_args(false)
        ->group("Map");
    app->add_option("--limit", _match.limit,
                    "Show at most N combinations of keys that only one side\nhas; 20 by default, "
                    "-1 for all")
        ->type_name("N")
        ->check(wholeNumberFrom(-1))
        ->group("Map");
    addFormat(*app, _match.format);
    addWidth(*app, _match.width);
    addCommonOptions(*app, common);
    app->callback([this, &common] { mapMatch(_match, common); });
}
