#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Sums the weights of each group, and with `moments` computes the moments of numeric fields. The
/// counts and ranges of the fields must be known. Reads the records in order, so the same records
/// give exactly the same numbers with any number of threads, in a group or alone. Throws JobError.
void sumUp(const ComponentQueries& queries, const InputTable& table, bool moments,
           GroupSummaries& groups);

} // namespace EmbeddedHV
