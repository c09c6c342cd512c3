#pragma once

#include <string>

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Whether the frequencies of the field are known and few enough for a table.
bool hasFrequencies(const FieldSummary& field);

/// A table of the frequencies of a categorical field: a row for each valid value, then the missing
/// values, with the percentage of all and of the valid records. With a weight, a layer of weights
/// comes before a layer of records. `key` names the field in the table's id.
Json frequencyTable(const FieldSummary& field, const std::string& key, bool weighted);

} // namespace EmbeddedHV
