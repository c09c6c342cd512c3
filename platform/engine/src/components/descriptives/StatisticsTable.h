#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The table of statistics with a row for each field: counts, and with `withSummaries` moments,
/// range and quartiles. A statistic that is not defined is empty; a footnote gives the reason.
Json statisticsTable(const DataSummary& summary, bool withSummaries);

} // namespace EmbeddedHV
