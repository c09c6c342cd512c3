#include "hvhost/map/GeoJsonOutput.h"

#include <sys/stat.h>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/OutputPath.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/StandardStreams.h"
#include "support/HVSimpleFile.h"

namespace {

/// The inode of a file; nothing if the file does not exist. A file that replaces another one has
/// its own inode.
std::optional<std::uint64_t> fileNumber(const std::string& path)
{
    struct stat state = {};
    return stat(path.c_str(), &state) == 0 ? std::optional<std::uint64_t>(state.st_ino)
                                           : std::nullopt;
}

} // namespace

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
    _origins = {{_geoJsonPath, _collected ? kTemporaryFile : options.output},
                {_dataModelPath, _unasked ? kTemporaryFile : options.dataModel}};
    _fileBefore = fileNumber(_geoJsonPath);
}

GeoJsonOutput::~GeoJsonOutput() = default;

void GeoJsonOutput::deliver() const
{
    // A job whose text Java could not give away is empty, and succeeds.
    if (const auto written = fileNumber(_geoJsonPath); !written || written == _fileBefore)
        throw CommandFault(ExitStatus::JobFailed, _geoJsonPath + ": the map was not written");
    if (_collected)
        deliverToStandardOutput(_geoJsonPath, _watch);
}
