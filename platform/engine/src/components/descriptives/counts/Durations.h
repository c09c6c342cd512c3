#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/CountSettings.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Describes the time since the first value of each date and timestamp, in days, and of each time
/// of day, in seconds, as far as the settings request it. Throws JobError.
void fillDurations(const ComponentQueries& queries, const InputTable& table,
                   const CountSettings& settings, DataSummary& summary);

} // namespace EmbeddedHV
