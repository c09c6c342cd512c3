#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A table with a row for each pattern of missing values; null if they were not counted.
Json missingPatternTable(const DataSummary& summary);

} // namespace EmbeddedHV
