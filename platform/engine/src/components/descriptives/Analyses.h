#pragma once

#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/DescriptivesSettings.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Adds the analyses that the settings request to the summary of a table. May change the table's
/// values, and with them the summary. `partName` is the name of a temporary table that this
/// function may create or replace. Throws JobError.
void analyse(const ComponentQueries& queries, const InputTable& table,
             const DescriptivesSettings& settings, const std::string& partName,
             DataSummary& summary);

/// What the analyses could not do, for messages; without the step.
std::vector<FaultParts> analysisRemarks(const DataSummary& summary,
                                        const AnalysisSettings& settings);

} // namespace EmbeddedHV
