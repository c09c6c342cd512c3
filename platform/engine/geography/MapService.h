#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// A feature service on the web, which answers with JSON under addresses below its own; or a folder
/// of such answers:
///
///     https://host/a/FeatureServer?f=json                 folder/service.json
///     https://host/a/FeatureServer/layers?f=json          folder/layers.json
///     https://host/a/FeatureServer/0?f=json               folder/0.json
///     https://host/a/FeatureServer/0/query?where=...      folder/0/query.json
///
/// What stands behind a question mark of its address goes along with every request.
class MapService
{
public:
    /// `address` is an http, https or file address; of a folder, or of the service.json in it.
    MapService(const std::string& address, StopWish stop);

    /// The answer at a path below the service, with the name of its file and the parameters of the
    /// request. Throws GeographyError, for an answer that reports a fault as well.
    nlohmann::json ask(const std::string& path, const std::string& file,
                       const std::string& parameters = {}) const;
    bool isFolder() const { return _isFolder; }
    /// The address as messages show it: without user info and query.
    const std::string& address() const { return _shown; }

private:
    std::string _address;
    std::string _shown;
    std::string _secret;
    bool _isFolder = false;
    StopWish _stop;
};

/// See Geography::serviceLayers.
std::string layersOf(const MapService& service);

/// The text under a key; empty if there is none.
std::string textIn(const nlohmann::json& object, const char* key);
/// The member of an object; null if there is none.
const nlohmann::json& memberOf(const nlohmann::json& object, const char* key);
/// The kind of shapes for a geometry type of the service; null for one that is not known.
const char* shapeWord(const std::string& geometryType);

} // namespace EmbeddedHV::maps
