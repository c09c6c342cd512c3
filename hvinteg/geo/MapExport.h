#pragma once

#include <string>

#include "hvl/HVLWrite.h"

/// Source system of a map with plane coordinates that belong to no system.
inline constexpr const char* kCartesian = "CARTESIAN";

/// A coordinate system as the caller specifies it. The id is used only if the name is unknown.
struct SystemChoice
{
    const std::string& name;
    int wkid;
};

/// A request for GeoJSON: the two systems, the output files, its name in traces, and the message
/// for failures that the engine does not explain.
struct MapExport
{
    SystemChoice from;
    SystemChoice to;
    const std::string& dataModelPath;
    const std::string& geoJsonPath;
    const char* operation;
    const char* message;

    bool isCartesian() const { return from.name == kCartesian; }
    void applyTo(HVLWrite& write) const;
    /// Writes the two output files of the job to the trace.
    void traceFiles() const;
};
