#pragma once

#include <memory>
#include <string>

#include "Commands.h"

class HVSimpleFile;
class InterruptWatch;

/// The two files of a GeoJSON request. What goes to standard output, and a data model that nobody
/// asked for, stand in scratch files for as long as this object lives. The watch is borrowed.
class GeoJsonOutput
{
public:
    /// Throws CommandFault as outputPath does.
    GeoJsonOutput(const GeoJsonOptions& options, const InterruptWatch& watch);
    ~GeoJsonOutput();

    const std::string& geoJsonPath() const { return _geoJsonPath; }
    const std::string& dataModelPath() const { return _dataModelPath; }
    /// Copies the GeoJSON to standard output, if it is to go there.
    void deliver() const;

private:
    const InterruptWatch& _watch;
    std::unique_ptr<HVSimpleFile> _collected;
    std::unique_ptr<HVSimpleFile> _unasked;
    std::string _geoJsonPath;
    std::string _dataModelPath;
};
