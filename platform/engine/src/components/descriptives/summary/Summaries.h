#pragma once

#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Computes the statistics that the settings request for the fields of a table, for each group.
/// Each statement computes all groups. A table of many fields is described in parts: `partName` is
/// the name of a temporary table that this function may create. Throws JobError.
GroupSummaries summarizeGroups(const ComponentQueries& queries, const InputTable& table,
                               const DescriptivesSettings& settings, const std::string& partName);

/// The statistics of a table that is not grouped; otherwise as summarizeGroups.
DataSummary summarize(const ComponentQueries& queries, const InputTable& table,
                      const DescriptivesSettings& settings, const std::string& partName);

} // namespace EmbeddedHV
