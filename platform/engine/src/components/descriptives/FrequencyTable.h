#pragma once

#include <string>

#include "components/descriptives/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Whether the values of the field are known and few enough to be shown each.
bool hasFrequencies(const FieldSummary& field);

/// How often the values of a categorical field occur: a row each, then the missing ones, with their
/// share of all and of the valid ones. With a weight there is a layer of weights before one of
/// records. `key` names the field in the table's id.
Json frequencyTable(const FieldSummary& field, const std::string& key, bool weighted);

} // namespace EmbeddedHV
