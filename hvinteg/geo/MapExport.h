#pragma once

#include <string>

#include "hvl/HVLWrite.h"

/// The source system of a map whose coordinates are those of a plane, without any system.
inline constexpr const char* kCartesian = "CARTESIAN";

/// A coordinate system as a caller names it: the name first, the well-known id where the name does
/// not say.
struct SystemChoice
{
    const std::string& name;
    int wkid;
};

/// A request for GeoJSON: between which systems, into which files, and what it is called in traces
/// and in the reason of a failure that the engine does not explain.
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
    /// Traces the two files that the job wrote.
    void traceFiles() const;
};
