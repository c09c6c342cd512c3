#include "MapService.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "ShownAddress.h"
#include "base/JsonDepth.h"

namespace EmbeddedHV::maps {
namespace {

using nlohmann::json;

constexpr std::string_view kServiceFile = "/service.json";

struct ShapeWord
{
    const char* type;
    const char* word;
};

constexpr ShapeWord kShapeWords[] = {
    {"esriGeometryPoint", "Point"},
    {"esriGeometryMultipoint", "MultiPoint"},
    {"esriGeometryPolyline", "MultiLineString"},
    {"esriGeometryPolygon", "MultiPolygon"},
    {"esriGeometryEnvelope", "Polygon"},
};

/// The types of fields that can be matched with a dataset.
constexpr const char* kKeyTypes[] = {"esriFieldTypeString", "esriFieldTypeInteger",
                                     "esriFieldTypeSmallInteger", "esriFieldTypeBigInteger"};

// Real answers have about ten levels.
constexpr int kDeepest = 64;
constexpr std::size_t kMostValues = 1'000'000; // in a description; each takes 100 bytes or more
constexpr std::size_t kMostBytes = std::size_t{32} << 20;
constexpr std::size_t kMostRecordBytes = std::size_t{128} << 20;

void checkBounds(const std::string& text, const base::JsonBounds& bounds, const std::string& place)
{
    const auto excess = base::excessOf(text, bounds);
    if (excess == base::JsonExcess::Depth)
        throw GeographyError(GeographyError::Service, place +
                                                          ": the answer is nested deeper than " +
                                                          std::to_string(bounds.depth) + " levels");
    if (excess == base::JsonExcess::Values)
        throw GeographyError(GeographyError::TooLarge, place + ": the answer holds more than " +
                                                           std::to_string(bounds.values) +
                                                           " values");
}

void checkAnswer(const json& answer, const std::string& place)
{
    if (!answer.is_object())
        throw GeographyError(GeographyError::Service, place + ": the answer is not JSON");
    const json& fault = memberOf(answer, "error");
    if (fault.is_null())
        return;
    const std::string message = textIn(fault, "message");
    throw GeographyError(GeographyError::Service,
                         place + ": the service reports a fault" +
                             (message.empty() ? std::string() : ": " + message));
}

std::string keysOf(const json& layer)
{
    std::string keys;
    const json& fields = memberOf(layer, "fields");
    for (const json& field : fields) {
        const std::string type = textIn(field, "type");
        if (std::ranges::find(kKeyTypes, type) == std::end(kKeyTypes))
            continue;
        keys += (keys.empty() ? "" : ",") + textIn(field, "name");
    }
    return keys;
}

/// The id of a layer as a text; empty if it has none.
std::string idOf(const json& layer)
{
    const json& id = memberOf(layer, "id");
    return id.is_number_integer() ? id.dump() : std::string();
}

/// The descriptions of the layers by id; empty if the service cannot describe all at once.
std::map<std::string, json> detailsOf(MapService& service)
{
    std::map<std::string, json> details;
    try {
        json answer = service.ask("/layers", "layers.json");
        const auto layers = answer.find("layers");
        if (layers == answer.end() || !layers->is_array())
            return details;
        for (json& layer : *layers)
            details.emplace(idOf(layer), std::move(layer));
    } catch (const GeographyError& error) {
        // A service need not support this. The list then has no details.
        if (error.kind() == GeographyError::Stopped)
            throw;
    }
    return details;
}

nlohmann::ordered_json entryOf(const json& layer, const json& details)
{
    const auto either = [&](const char* key) {
        std::string text = textIn(layer, key);
        return text.empty() ? textIn(details, key) : text;
    };
    const char* features = shapeWord(either("geometryType"));
    nlohmann::ordered_json entry{{"value", idOf(layer)},
                                 {"name", textIn(layer, "name")},
                                 {"keys", keysOf(details)},
                                 {"description", either("description")},
                                 {"features", features ? features : ""}};
    const json& subLayers = memberOf(layer, "subLayerIds");
    if (subLayers.is_array() && !subLayers.empty())
        entry["subLayers"] = subLayers;
    return entry;
}

} // namespace

const json& memberOf(const json& object, const char* key)
{
    static const json kNone;
    if (!object.is_object())
        return kNone;
    const auto found = object.find(key);
    return found == object.end() ? kNone : *found;
}

std::string textIn(const json& object, const char* key)
{
    const json& member = memberOf(object, key);
    return member.is_string() ? member.get<std::string>() : std::string();
}

const char* shapeWord(const std::string& geometryType)
{
    for (const ShapeWord& known : kShapeWords)
        if (geometryType == known.type)
            return known.word;
    return nullptr;
}

MapService::MapService(const std::string& address, StopWish stop, Fetch fetch)
    : _address(address), _stop(std::move(stop)), _fetch(std::move(fetch))
{
    _isFolder = address.starts_with("file://");
    // A query may contain a key, which messages must not show.
    if (const auto mark = _address.find('?'); mark != std::string::npos && !_isFolder) {
        _secret = _address.substr(mark + 1);
        _address.resize(mark);
    }
    if (_isFolder && _address.ends_with(kServiceFile))
        _address.resize(_address.size() - kServiceFile.size());
    while (_address.ends_with('/'))
        _address.pop_back();
    _shown = withoutCredentials(_address);
}

json MapService::ask(const std::string& path, const std::string& file)
{
    return answer(path, file, {}, kMostBytes, kMostValues);
}

json MapService::askForRecords(const std::string& path, const std::string& file,
                               const std::string& parameters, std::size_t mostValues)
{
    return answer(path, file, parameters, kMostRecordBytes, mostValues);
}

json MapService::answer(const std::string& path, const std::string& file,
                        const std::string& parameters, std::size_t mostBytes,
                        std::size_t mostValues)
{
    const std::string tail = _isFolder ? "/" + file : path;
    std::string address = _address + tail;
    if (!_isFolder)
        address += "?f=json" + (parameters.empty() ? "" : "&" + parameters) +
                   (_secret.empty() ? "" : "&" + _secret);
    const std::string text = _fetch(address, mostBytes, _stop);
    _received += text.size();
    checkBounds(text, {kDeepest, mostValues}, _shown + tail);
    json parsed = json::parse(text, nullptr, false);
    checkAnswer(parsed, _shown + tail);
    return parsed;
}

std::string layersOf(MapService& service)
{
    const json answer = service.ask("", "service.json");
    const json& layers = memberOf(answer, "layers");
    if (!layers.is_array())
        throw GeographyError(GeographyError::Service,
                             service.address() + ": this is not a map service: it lists no layers");
    const auto details = detailsOf(service);
    auto list = nlohmann::ordered_json::array();
    for (const json& layer : layers) {
        if (idOf(layer).empty())
            throw GeographyError(GeographyError::Service,
                                 service.address() + ": the service names a layer without an id");
        const auto found = details.find(idOf(layer));
        list.push_back(entryOf(layer, found == details.end() ? json() : found->second));
    }
    return list.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace EmbeddedHV::maps
