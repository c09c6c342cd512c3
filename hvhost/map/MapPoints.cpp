#include "hvhost/map/MapPoints.h"

#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/KnownDataset.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/map/GeoJsonOutput.h"
#include "hvhost/map/MapSession.h"

namespace {

/// The variable of a coordinate, by its name in the host.
std::string coordinate(const Dataset& dataset, const char* option, const std::string& name)
{
    const std::string origin = std::string(option) + " " + name;
    const int column = dataset.columnOf(name, origin);
    if (dataset.storageOf(column) == CFField::String)
        throw TextFieldFault(dataset.nameOf(column),
                             origin + ": a coordinate is a number, not a text");
    return dataset.source().GetVariable(column).GetName();
}

} // namespace

void mapPoints(const MapPointsOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const bool isPlane = options.result.from.empty() || options.result.from == kPlane;
    refuseTargetOfPlane(options.result, isPlane);
    const InputFile input(options.input, FileOptions::None, watch);
    const Dataset& dataset = *input.dataset();
    std::vector<std::string> fields;
    explainingTexts(input, [&] {
        fields = {coordinate(dataset, "--x", options.x), coordinate(dataset, "--y", options.y)};
        if (!options.z.empty())
            fields.push_back(coordinate(dataset, "--z", options.z));
    });
    const GeoJsonOutput output(options.result, watch);
    MapSession session("points", common, watch);
    session.host().introduce(input);
    const KnownSystem from = sourceSystem(session, isPlane ? kPlane : options.result.from);
    const KnownSystem to = session.system("--to", options.result.to);
    const KnownDataset known(dataset);
    JobOrigin origin = input.origin();
    origin.outputs = output.origins();
    session.perform(
        [&](HVInteractiveSTEM& maps) {
            return maps.getPointGeoJSON(from.name, from.wkid, to.name, to.wkid, known.id(), "",
                                        fields, output.dataModelPath(), output.geoJsonPath());
        },
        options.input.path, origin);
    output.deliver();
    input.finish();
    session.host().finish();
}
