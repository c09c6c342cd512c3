#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Counts the values of each continuous number in bins. Bins of equal width are those of the
/// histogram. Bins of equal frequencies end at the deciles; equal deciles make fewer bins. A value
/// on an edge belongs to the bin that begins there, the greatest value to the last bin. Throws
/// JobError.
void fillBins(const ComponentQueries& queries, const InputTable& table, bool equalFrequencies,
              DataSummary& summary);

} // namespace EmbeddedHV
