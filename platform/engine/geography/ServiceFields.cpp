#include "ServiceFields.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "MapService.h"

namespace EmbeddedHV::maps {
namespace {

using nlohmann::json;

constexpr const char* kShapeField = "shape";

struct ServiceStorage
{
    const char* type;
    CFField::StorageType storage;
};

/// Fields of other types become texts.
constexpr ServiceStorage kServiceStorages[] = {
    {"esriFieldTypeOID", CFField::Integer},        {"esriFieldTypeInteger", CFField::Integer},
    {"esriFieldTypeBigInteger", CFField::Integer}, {"esriFieldTypeSmallInteger", CFField::Integer},
    {"esriFieldTypeDouble", CFField::Real},        {"esriFieldTypeSingle", CFField::Real},
    {"esriFieldTypeDate", CFField::Timestamp},
};

/// Types for which a query returns no plain values.
constexpr const char* kWithoutValues[] = {"esriFieldTypeGeometry", "esriFieldTypeBlob",
                                          "esriFieldTypeRaster"};

CFField::StorageType storageOf(const std::string& type)
{
    const auto* found = std::ranges::find(kServiceStorages, type, &ServiceStorage::type);
    return found == std::end(kServiceStorages) ? CFField::String : found->storage;
}

CFDatum datumOf(const json& code)
{
    if (code.is_string())
        return CFDatum(code.get<std::string>());
    if (code.is_number_integer())
        return CFDatum(code.get<std::int64_t>());
    return code.is_number() ? CFDatum(code.get<double>()) : CFDatum();
}

CFField attributeField(const json& described)
{
    const std::string name = textIn(described, "name");
    const CFField::StorageType storage = storageOf(textIn(described, "type"));
    const json& codes = memberOf(memberOf(described, "domain"), "codedValues");
    std::vector<CFValue> labels;
    for (const json& code : codes)
        labels.emplace_back(datumOf(memberOf(code, "code")), textIn(code, "name"));
    // Numbers with labels are codes.
    const bool isNamed = storage == CFField::String || !labels.empty();
    CFField field(name, isNamed ? CFField::Nominal : CFField::Continuous, storage);
    if (const std::string label = textIn(described, "alias"); label != name)
        field.SetLabel(label);
    field.SetValueLabels(std::move(labels));
    return field;
}

std::optional<CoordinateSystem> systemOf(const json& reference, CoordinateSystems& systems)
{
    // The latest id belongs to a public catalogue if that has the system.
    for (const char* key : {"latestWkid", "wkid"}) {
        const json& wkid = memberOf(reference, key);
        if (!wkid.is_number_integer())
            continue;
        try {
            return systems.of(wkid.get<int>());
        } catch (const GeographyError&) {
            continue; // the other id may be known
        }
    }
    const ContextPtr context = newContext();
    // Only from WKT: other definitions may refer to files on this machine.
    const ObjectPtr system(proj_create_from_wkt(context.get(), textIn(reference, "wkt").c_str(),
                                                nullptr, nullptr, nullptr));
    return system ? describe(context.get(), system.get(), -1) : std::nullopt;
}

std::optional<CFGeo::Envelope> envelopeOf(const json& extent)
{
    double corners[4] = {};
    const char* const keys[] = {"xmin", "ymax", "xmax", "ymin"};
    for (std::size_t i = 0; i < std::size(keys); ++i) {
        const json& corner = memberOf(extent, keys[i]);
        if (!corner.is_number())
            return std::nullopt;
        corners[i] = corner.get<double>();
    }
    return CFGeo::Envelope{corners[0], corners[1], corners[2], corners[3]};
}

CFField shapeField(const json& layer, const std::string& place, CoordinateSystems& systems)
{
    const char* word = shapeWord(textIn(layer, "geometryType"));
    int type = CFGeo::Point;
    while (word && WordOf(static_cast<CFGeo::Type>(type)) &&
           std::string(word) != WordOf(static_cast<CFGeo::Type>(type)))
        ++type;
    if (!word)
        throw GeographyError(GeographyError::Service, place + ": the layer holds no shapes");
    const json& hasZ = memberOf(layer, "hasZ");
    CFGeo geo(static_cast<CFGeo::Type>(type), hasZ.is_boolean() && hasZ.get<bool>() ? 3 : 2);
    const json& extent = memberOf(layer, "extent");
    if (const auto system = systemOf(memberOf(extent, "spatialReference"), systems))
        geo.SetCoordinateSystem(system->wkid, system->name, system->isProjected, system->wkt);
    if (const auto envelope = envelopeOf(extent))
        geo.SetEnvelope(*envelope);
    CFField field(kShapeField, CFField::Typeless, CFField::String, CFField::None);
    field.SetGeo(std::move(geo));
    return field;
}

/// Reads a whole number and scales it. Missing if it is not a number or exceeds 64 bits.
void readInteger(const json& attribute, std::int64_t scale, LayerValue& value)
{
    constexpr double kMost = 9.2e18;
    const double number = attribute.is_number() ? attribute.get<double>() : NAN;
    value.isMissing = !(std::fabs(number) * static_cast<double>(scale) < kMost);
    if (value.isMissing)
        return;
    value.integer = attribute.is_number_integer()
                        ? attribute.get<std::int64_t>() * scale
                        : std::llround(number * static_cast<double>(scale));
}

} // namespace

std::vector<CFField> fieldsOfLayer(const json& layer, const std::string& place,
                                   CoordinateSystems& systems)
{
    std::vector<CFField> fields;
    for (const json& described : memberOf(layer, "fields")) {
        const std::string type = textIn(described, "type");
        if (std::ranges::find(kWithoutValues, type) == std::end(kWithoutValues))
            fields.push_back(attributeField(described));
    }
    fields.push_back(shapeField(layer, place, systems));
    return fields;
}

void readValue(const json& attribute, CFField::StorageType storage, LayerValue& value)
{
    constexpr std::int64_t kMicrosecondsOfMillisecond = 1000;
    switch (storage) {
    case CFField::Integer:
        return readInteger(attribute, 1, value);
    case CFField::Timestamp:
        return readInteger(attribute, kMicrosecondsOfMillisecond, value);
    case CFField::Real:
        value.isMissing = !attribute.is_number();
        if (!value.isMissing)
            value.real = attribute.get<double>();
        return;
    default:
        value.isMissing = attribute.is_null();
        value.text = attribute.is_string() ? attribute.get<std::string>() : attribute.dump();
    }
}

} // namespace EmbeddedHV::maps
