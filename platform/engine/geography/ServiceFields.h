#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "CoordinateSystems.h"

namespace EmbeddedHV::maps {

/// The fields in the description of a layer, in its order. The last field has the shapes.
std::vector<CFField> fieldsOfLayer(const nlohmann::json& layer, const std::string& place,
                                   CoordinateSystems& systems);

/// Converts a value of an answer to the storage of the field.
void readValue(const nlohmann::json& attribute, CFField::StorageType storage, LayerValue& value);

} // namespace EmbeddedHV::maps
