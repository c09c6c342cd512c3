#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// A row of value, records and weight, its value on the scale of data models.
ValueCount valueCountAt(duck::Result& rows, std::size_t row, CFField::StorageType storage);

/// Counts the values that a field declares missing, in ascending order, and after them the records
/// without any value; none at all if they are too many to be told. Throws JobError.
void fillMissingValues(const ComponentQueries& queries, const InputTable& table,
                       FieldSummary& summary);

} // namespace EmbeddedHV
