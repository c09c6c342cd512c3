#pragma once

#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

/// A library that the engine reads maps with.
struct MapLibrary
{
    std::string name;
    std::string version;
    std::string data; ///< where its data are; empty if it finds none
};

/// The libraries of maps, which are loaded for the purpose: jobs without maps do without them. Any
/// thread. Throws Exception, which says why, if they cannot be loaded.
ENGINE_API std::vector<MapLibrary> mapLibraries();

} // namespace EmbeddedHV
