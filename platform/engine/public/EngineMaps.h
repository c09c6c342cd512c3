#pragma once

#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

/// A library that the engine uses to read maps. All texts are UTF-8.
struct MapLibrary
{
    std::string name;    ///< for example GDAL
    std::string version; ///< as the library reports it
    std::string data;    ///< the folder of its data; empty if the library does not find it
};

/// Lists the map libraries. Loads them if no job has loaded them yet. Any thread. Throws Exception,
/// which gives the reason, if they cannot be loaded.
ENGINE_API std::vector<MapLibrary> mapLibraries();

} // namespace EmbeddedHV
