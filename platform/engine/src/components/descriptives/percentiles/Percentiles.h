#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Computes the percentiles of all numeric fields for these percents. They are exact. Counts and
/// weights of the fields must be known. Throws JobError.
///
/// The formula is that of the quartiles, see weightedQuantiles.
void fillPercentiles(const ComponentQueries& queries, const InputTable& table,
                     const std::vector<double>& percents, DataSummary& summary);

} // namespace EmbeddedHV
