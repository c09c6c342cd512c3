#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/FieldSummary.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// Computes the statistics that the settings request for the fields of a table. Throws JobError.
DataSummary summarize(const ComponentQueries& queries, const InputTable& table,
                      const DescriptivesSettings& settings);

} // namespace EmbeddedHV
