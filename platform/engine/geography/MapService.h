#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <nlohmann/json.hpp>

#include "WebFetch.h"
#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// A feature service on the web that answers with JSON, or a folder with such answers:
///
///     https://host/a/FeatureServer?f=json                 folder/service.json
///     https://host/a/FeatureServer/layers?f=json          folder/layers.json
///     https://host/a/FeatureServer/0?f=json               folder/0.json
///     https://host/a/FeatureServer/0/query?where=...      folder/0/query.json
///
/// If the address has a query, it is sent with every request.
///
/// Answers are not trusted: their size, depth and number of values are checked before they are
/// parsed.
class MapService
{
public:
    /// Fetches the text at an address, see fetchText.
    using Fetch = std::function<std::string(const std::string&, std::size_t, const StopWish&)>;

    /// `address` is an http, https or file address. A file address names a folder, or the
    /// service.json in it.
    MapService(const std::string& address, StopWish stop, Fetch fetch = fetchText);

    /// The description at a path below the service. `file` is its file name in a folder. Throws
    /// GeographyError, also if the answer reports an error.
    nlohmann::json ask(const std::string& path, const std::string& file);
    /// The answer to a query for records with these parameters. Throws GeographyError; its kind is
    /// TooLarge if the answer has too many values or bytes.
    nlohmann::json askForRecords(const std::string& path, const std::string& file,
                                 const std::string& parameters, std::size_t mostValues);
    /// The size of all answers so far, in bytes.
    std::uint64_t received() const { return _received; }
    bool isFolder() const { return _isFolder; }
    /// The address for messages, without user info and query.
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

/// The text of a member, or empty.
std::string textIn(const nlohmann::json& object, const char* key);
/// A member of an object, or null.
const nlohmann::json& memberOf(const nlohmann::json& object, const char* key);
/// The kind of shapes for a geometry type of the service; null if the type is unknown.
const char* shapeWord(const std::string& geometryType);

} // namespace EmbeddedHV::maps
