#pragma once

#include <cstddef>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Sets the distinct values of a field in each group, in ascending order and with the labels that
/// it has for them. Sets none if there are more than the settings allow. Text fields also get their
/// distribution. `field` is the field's position. Dates and times are on the scale of data models:
/// days and seconds since 1970-01-01, seconds since midnight. Throws JobError.
void fillDistinctValues(const ComponentQueries& queries, const InputTable& table,
                        const DescriptivesSettings& settings, std::size_t field,
                        GroupSummaries& groups);

} // namespace EmbeddedHV
