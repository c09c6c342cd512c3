#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Fills in the range of each field that is not a text, and the histogram of each continuous field,
/// for the result documents of the groups. Throws JobError.
void fillHistograms(const ComponentQueries& queries, const InputTable& table,
                    GroupSummaries& groups);

} // namespace EmbeddedHV
