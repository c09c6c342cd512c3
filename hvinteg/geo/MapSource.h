#pragma once

#include <optional>
#include <string>

class HVLRead;

/// The source of a map's geometry: a shape file or a layer of a map service.
struct MapSource
{
    /// `path` is in the host's encoding and spelling.
    static MapSource shape(const std::string& path);
    /// `url` is UTF-8.
    static MapSource service(const std::string& url, int layer);

    void applyTo(HVLRead& read) const;

    std::string location;     ///< in the engine's spelling
    std::optional<int> layer; ///< of a service; empty for a shape file
};
