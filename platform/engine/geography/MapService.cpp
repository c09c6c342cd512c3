#include "MapService.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "ShownAddress.h"
#include "WebFetch.h"

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

/// Fields whose values can be found in a dataset again.
constexpr const char* kKeyTypes[] = {"esriFieldTypeString", "esriFieldTypeInteger",
                                     "esriFieldTypeSmallInteger", "esriFieldTypeBigInteger"};

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

/// What the service tells of each layer, by id; nothing if it does not tell of all at once.
std::map<std::string, json> detailsOf(const MapService& service)
{
    std::map<std::string, json> details;
    try {
        const json answer = service.ask("/layers", "layers.json");
        for (const json& layer : memberOf(answer, "layers"))
            details.emplace(memberOf(layer, "id").dump(), layer);
    } catch (const GeographyError& error) {
        // A service need not tell of all layers at once; the list does without details then.
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
    nlohmann::ordered_json entry{{"value", memberOf(layer, "id").dump()},
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

MapService::MapService(const std::string& address, StopWish stop)
    : _address(address), _stop(std::move(stop))
{
    _isFolder = address.starts_with("file://");
    // A query part may be a key, which no message may show.
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

json MapService::ask(const std::string& path, const std::string& file,
                     const std::string& parameters) const
{
    const std::string tail = _isFolder ? "/" + file : path;
    std::string address = _address + tail;
    if (!_isFolder)
        address += "?f=json" + (parameters.empty() ? "" : "&" + parameters) +
                   (_secret.empty() ? "" : "&" + _secret);
    json answer = json::parse(fetchText(address, _stop), nullptr, false);
    checkAnswer(answer, _shown + tail);
    return answer;
}

std::string layersOf(const MapService& service)
{
    const json answer = service.ask("", "service.json");
    const json& layers = memberOf(answer, "layers");
    if (!layers.is_array())
        throw GeographyError(GeographyError::Service,
                             service.address() + ": this is no map service: it names no layers");
    const auto details = detailsOf(service);
    auto list = nlohmann::ordered_json::array();
    for (const json& layer : layers) {
        const auto found = details.find(memberOf(layer, "id").dump());
        list.push_back(entryOf(layer, found == details.end() ? json() : found->second));
    }
    return list.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace EmbeddedHV::maps
