#include "GeoJsonOutput.h"

#include "OutputPath.h"
#include "ReadableFile.h"
#include "StandardStreams.h"
#include "support/HVSimpleFile.h"

GeoJsonOutput::GeoJsonOutput(const GeoJsonOptions& options, const InterruptWatch& watch)
    : _watch(watch)
{
    if (options.output == kStandardStream) {
        _collected = std::make_unique<HVSimpleFile>("map.geojson", false, true);
        _geoJsonPath = nativePath(_collected->GetGenericPath());
    } else {
        _geoJsonPath = outputPath(options.output, options.force);
    }
    if (options.dataModel.empty()) {
        _unasked = std::make_unique<HVSimpleFile>("map.xml", false, true);
        _dataModelPath = nativePath(_unasked->GetGenericPath());
    } else {
        _dataModelPath = outputPath(options.dataModel, options.force);
    }
}

GeoJsonOutput::~GeoJsonOutput() = default;

void GeoJsonOutput::deliver() const
{
    if (_collected)
        deliverToStandardOutput(_geoJsonPath, _watch);
}
