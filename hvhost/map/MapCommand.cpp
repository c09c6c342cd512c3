#include "hvhost/map/MapCommand.h"

#include "hvhost/base/HelpText.h"
#include "hvhost/map/MapConvert.h"
#include "hvhost/map/MapInfo.h"
#include "hvhost/map/MapMatch.h"
#include "hvhost/map/MapPoints.h"

void addMapCommand(CLI::App& app, CommonOptions& common)
{
    CLI::App* const map =
        newCommandGroup(app, "map", "Show maps, write them as GeoJSON, match their keys.");
    addMapInfoCommand(*map, common);
    addMapConvertCommand(*map, common);
    addMapPointsCommand(*map, common);
    addMapMatchCommand(*map, common);
}
