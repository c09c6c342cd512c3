#include "EngineMaps.h"

#include "EngineException.h"
#include "maps/GeographyLibrary.h"

namespace EmbeddedHV {

std::vector<MapLibrary> mapLibraries()
{
    try {
        std::vector<MapLibrary> libraries;
        for (const auto& [name, version, data] : maps::geography().libraries())
            libraries.push_back({name, version, data});
        return libraries;
    } catch (const std::exception& error) {
        throw Exception(error.what());
    }
}

} // namespace EmbeddedHV
