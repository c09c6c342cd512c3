#pragma once

#include "components/descriptives/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The table of the statistics of all fields, a row each: counts, and with `withSummaries` moments,
/// range and quartiles. What the values do not determine is empty, with a footnote that says why.
Json statisticsTable(const DataSummary& summary, bool withSummaries);

} // namespace EmbeddedHV
