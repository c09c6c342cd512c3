#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// Sums up weights, and with `moments` finds the moments of numeric fields, whose counts and ranges
/// are known by now. The records are taken in their order, so the same records give the same
/// numbers to the last bit, however many threads read them. Throws JobError.
void sumUp(const ComponentQueries& queries, const InputTable& table, bool moments,
           DataSummary& summary);

} // namespace EmbeddedHV
