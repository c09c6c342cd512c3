#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <nlohmann/json.hpp>

#include "WebFetch.h"
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
///
/// An answer comes from a stranger: its size, its depth and the number of its values are bounded
/// before it is parsed.
class MapService
{
public:
    /// Gets the text at an address, as fetchText does.
    using Fetch = std::function<std::string(const std::string&, std::size_t, const StopWish&)>;

    /// `address` is an http, https or file address; of a folder, or of the service.json in it.
    MapService(const std::string& address, StopWish stop, Fetch fetch = fetchText);

    /// The answer at a path below the service, with the name of its file: what it tells of itself,
    /// or of a layer. Throws GeographyError, for an answer that reports a fault as well.
    nlohmann::json ask(const std::string& path, const std::string& file);
    /// The answer to a query for records, with the parameters of the request. Throws the same;
    /// TooLarge for more values, or bytes, than an answer may have.
    nlohmann::json askForRecords(const std::string& path, const std::string& file,
                                 const std::string& parameters, std::size_t mostValues);
    /// The size of all answers so far, in bytes.
    std::uint64_t received() const { return _received; }
    bool isFolder() const { return _isFolder; }
    /// The address as messages show it: without user info and query.
    const std::string& address() const { return _shown; }

private:
    nlohmann::json answer(const std::string& path, const std::string& file,
                          const std::string& parameters, std::size_t mostBytes,
                          std::size_t mostValues);

    std::string _address;
    std::string _shown;
    std::string _secret;
    bool _isFolder = false;
    StopWish _stop;
    Fetch _fetch;
    std::uint64_t _received = 0;
};

/// See Geography::serviceLayers.
std::string layersOf(MapService& service);

/// The text under a key; empty if there is none.
std::string textIn(const nlohmann::json& object, const char* key);
/// The member of an object; null if there is none.
const nlohmann::json& memberOf(const nlohmann::json& object, const char* key);
/// The kind of shapes for a geometry type of the service; null for one that is not known.
const char* shapeWord(const std::string& geometryType);

} // namespace EmbeddedHV::maps
