#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CFDatum.h"
#include "datafile/Duck.h"
#include "duckdb/NewTable.h"
#include "runtime/DataModel.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Values of a dimension field. A datum is of the kind of the field; a date is an integer, its days
/// since 1970-01-01, and so is a time or a timestamp, in microseconds.
using DimensionValues = std::vector<CFDatum>;

/// The value of a chunk's column; null if it is missing.
CFDatum dimensionValueAt(const duck::Chunk& chunk, std::size_t column, std::size_t row,
                         CFField::StorageType storage);
/// Adds the value to the record.
void addDimensionValue(NewTable& table, const CFDatum& value, CFField::StorageType storage);

/// The text that users see: "north", "7", "2.5" or "2024-01-31".
std::string dimensionText(const CFDatum& value, CFField::StorageType storage);
/// A number as a number, anything else as its text.
Json dimensionJson(const CFDatum& value, CFField::StorageType storage);
/// The value of such a JSON value, or of a number's text; nothing if the field has no such values.
std::optional<CFDatum> dimensionValueOf(const Json& json, CFField::StorageType storage);

} // namespace EmbeddedHV
