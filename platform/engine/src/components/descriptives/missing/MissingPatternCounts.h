#pragma once

#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// With more fields that have missing values, patterns are not counted.
inline constexpr std::size_t kMostPatternFields = 100;

/// Whether the patterns of these fields can be counted. The counts of the fields must be known.
bool canCountPatterns(const DataSummary& summary);
/// Counts which fields are missing together, if that is possible. `partName` is as in forFieldSets.
/// Throws JobError.
void fillMissingPatterns(const ComponentQueries& queries, const InputTable& table,
                         const std::string& partName, DataSummary& summary);

} // namespace EmbeddedHV
