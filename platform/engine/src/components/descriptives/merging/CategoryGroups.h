#pragma once

#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Categories with more values than this are not merged.
inline constexpr std::int64_t kMostMerged = 100;
/// Whether the values of a field can be merged, or others by this field.
bool canMerge(const FieldSummary& field);

/// Merges the values of each category that do not differ in the distribution of the target, see
/// mergedRows, over the records with a value of both. There are
/// no groups of fields that cannot be merged. `partName` is the name of a temporary table that this
/// function may create or replace. Throws JobError.
void fillCategoryGroups(const ComponentQueries& queries, const InputTable& table,
                        const std::string& partName, const std::string& target,
                        DataSummary& summary);

} // namespace EmbeddedHV
