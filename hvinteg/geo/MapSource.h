#pragma once

#include <optional>
#include <string>

class HVLRead;

/// Where the geometry of a map comes from: a shape file, or a layer of a map service.
struct MapSource
{
    /// `path` is in the host's encoding and spelling.
    static MapSource shape(const std::string& path);
    /// `url` is UTF-8.
    static MapSource service(const std::string& url, int layer);

    void applyTo(HVLRead& read) const;

    std::string location;     ///< as the engine takes it
    std::optional<int> layer; ///< of a service; a shape file has none
};
