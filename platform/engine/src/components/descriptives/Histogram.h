#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// Finds range and, for a field on a scale, the histogram of each field that has an order other
/// than that of texts: what a result document shows beyond the statistics. Throws JobError.
void fillHistograms(const ComponentQueries& queries, const InputTable& table, DataSummary& summary);

} // namespace EmbeddedHV
