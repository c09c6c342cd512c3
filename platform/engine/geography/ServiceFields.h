#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "CoordinateSystems.h"

namespace EmbeddedHV::maps {

/// The fields that the description of a layer tells of, in its order; the shapes come last.
std::vector<CFField> fieldsOfLayer(const nlohmann::json& layer, const std::string& place,
                                   CoordinateSystems& systems);

/// A value of an answer as the field's storage has it.
void readValue(const nlohmann::json& attribute, CFField::StorageType storage, LayerValue& value);

} // namespace EmbeddedHV::maps
