#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/OutlierRule.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A table of the bounds and the numbers of outliers, with a row for each continuous numeric field;
/// null if there is no such field.
Json outlierTable(const DataSummary& summary, const OutlierRule& rule);

} // namespace EmbeddedHV
