#include "hvhost/map/MapConvert.h"

#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/map/GeoJsonOutput.h"
#include "hvhost/map/MapSession.h"

namespace {

// An option without effect is rejected, so that the user does not rely on it.
void refuseSourceWithoutTarget(const GeoJsonOptions& options)
{
    if (!options.from.empty() && options.to.empty())
        throw CommandFault(ExitStatus::Usage,
                           "--from " + options.from + ": without --to no shape is moved",
                           "--to names the coordinate system of the result");
}

} // namespace

void mapConvert(const MapConvertOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const MapInput map(options.map, true);
    refuseTargetOfPlane(options.result, options.result.from == kPlane);
    refuseSourceWithoutTarget(options.result);
    const GeoJsonOutput output(options.result, watch);
    MapSession session("convert", common, watch);
    const KnownSystem from = sourceSystem(session, options.result.from);
    const KnownSystem to = session.system("--to", options.result.to);
    JobOrigin origin = map.origin();
    origin.outputs = output.origins();
    session.perform(
        [&](HVInteractiveSTEM& maps) {
            return map.isService()
                       ? maps.getServiceGeoJSON(from.name, from.wkid, to.name, to.wkid,
                                                map.location(), *map.layer(),
                                                output.dataModelPath(), output.geoJsonPath())
                       : maps.getShapeGeoJSON(from.name, from.wkid, to.name, to.wkid,
                                              map.location(), output.dataModelPath(),
                                              output.geoJsonPath());
        },
        map.name(), origin);
    output.deliver();
    session.host().finish();
}
