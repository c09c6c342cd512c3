#pragma once

#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Computes the pairs of a number and a category, with a statement for each category and some
/// numbers. `partName` is as in forFieldSets. Throws JobError.
void fillGroupPairs(const ComponentQueries& queries, const InputTable& table,
                    const std::string& partName, const DataSummary& summary,
                    std::vector<PairStatistic>& pairs);

/// Computes the pairs of two categories, with a statement for each pair. `partName` is as in
/// forFieldSets. Throws JobError.
void fillCategoryPairs(const ComponentQueries& queries, const InputTable& table,
                       const std::string& partName, const DataSummary& summary,
                       std::vector<PairStatistic>& pairs);

} // namespace EmbeddedHV
