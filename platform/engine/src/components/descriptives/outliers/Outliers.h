#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/DescriptivesSettings.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Finds the outliers of the continuous numeric fields by the rule of the settings, if they have
/// one. If it trims or winsorizes, changes the table and computes the summary again.
/// `partName` is the name of a temporary table that this function may create or replace. Throws
/// JobError.
void handleOutliers(const ComponentQueries& queries, const InputTable& table,
                    const DescriptivesSettings& settings, const std::string& partName,
                    DataSummary& summary);

} // namespace EmbeddedHV
