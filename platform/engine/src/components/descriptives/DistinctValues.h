#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// Gives the field its distinct values, in ascending order and with the labels that it has for
/// them, if there are no more than the settings ask for; else none. Texts get their distribution
/// along with them. Dates and times are on the scale of data models: days and seconds since
/// 1970-01-01, seconds of the day. Throws JobError.
void fillDistinctValues(const ComponentQueries& queries, const InputTable& table,
                        const DescriptivesSettings& settings, FieldSummary& summary);

} // namespace EmbeddedHV
