#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A table with a row for each field with percentiles and a column for each percent; null if no
/// field has percentiles.
Json percentileTable(const DataSummary& summary);

} // namespace EmbeddedHV
