#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hvhost/base/JobOrigin.h"
#include "hvhost/map/GeoJsonOptions.h"

class HVSimpleFile;
class InterruptWatch;

/// The two output files of a GeoJSON request. The text for standard output, and a data model that
/// was not requested, are in scratch files during the lifetime of the object. Borrows the watch.
class GeoJsonOutput
{
public:
    /// Throws CommandFault as outputPath does.
    GeoJsonOutput(const GeoJsonOptions& options, const InterruptWatch& watch);
    ~GeoJsonOutput();

    const std::string& geoJsonPath() const { return _geoJsonPath; }
    const std::string& dataModelPath() const { return _dataModelPath; }
    /// Both files with the user's names.
    const std::vector<JobOrigin::File>& origins() const { return _origins; }
    /// After a request that succeeded: copies the GeoJSON to standard output if it belongs there.
    /// Throws CommandFault if the request has written no file.
    void deliver() const;

private:
    const InterruptWatch& _watch;
    std::unique_ptr<HVSimpleFile> _collected;
    std::unique_ptr<HVSimpleFile> _unasked;
    std::string _geoJsonPath;
    std::string _dataModelPath;
    std::vector<JobOrigin::File> _origins;
    std::optional<std::uint64_t> _fileBefore; ///< the inode of the file that the output replaces
};
