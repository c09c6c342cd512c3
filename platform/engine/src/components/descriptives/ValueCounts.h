#pragma once

#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// SQL of a value on the scale of data models, for the rows of valueCountAt. A zero character in a
/// text becomes U+FFFD: XML has none, and the host's labels end at one.
std::string countedValue(const std::string& column, CFField::StorageType storage);

/// A row of value, records and weight, its value on the scale of data models.
ValueCount valueCountAt(duck::Result& rows, std::size_t row, CFField::StorageType storage);

/// Counts the values that a field declares missing, in ascending order, and after them the records
/// without any value; none at all if they are too many to be told. Throws JobError.
void fillMissingValues(const ComponentQueries& queries, const InputTable& table,
                       FieldSummary& summary);

} // namespace EmbeddedHV
