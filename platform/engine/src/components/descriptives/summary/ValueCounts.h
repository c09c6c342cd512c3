#pragma once

#include <cstddef>
#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// SQL for a value on the scale of data models, for the rows of valueCountAt. Replaces zero
/// characters in a text with U+FFFD: XML does not allow them, and the host's labels would end
/// there.
std::string countedValue(const std::string& column, CFField::StorageType storage);

/// Reads a row of value, records and weight. The value is on the scale of data models.
ValueCount valueCountAt(duck::Result& rows, std::size_t row, CFField::StorageType storage);

/// Counts the values that a field declares missing in each group, in ascending order, and then the
/// records without a value. Counts nothing if there are too many such values. `field` is the
/// field's position. Throws JobError.
void fillMissingValues(const ComponentQueries& queries, const InputTable& table, std::size_t field,
                       GroupSummaries& groups);

} // namespace EmbeddedHV
