#pragma once

#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Computes the pairs of two numbers, in one pass over the records. Throws JobError.
void fillNumberPairs(const ComponentQueries& queries, const InputTable& table,
                     const DataSummary& summary, std::vector<PairStatistic>& pairs);

} // namespace EmbeddedHV
