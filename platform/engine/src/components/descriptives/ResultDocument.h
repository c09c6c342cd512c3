#pragma once

#include <string>
#include <vector>

#include "components/descriptives/TimeInterval.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/DescriptivesSettings.h"

namespace EmbeddedHV {

/// The text of "Results.json", see docs/result-document.md: the data model of the fields and the
/// result object "descriptives". The object has a table of statistics, for each field its
/// frequencies or its histogram, and a table of time intervals if there are any. The
/// analyses that the settings request have their tables and charts. The remarks become
/// notifications.
std::string resultDocument(const DataSummary& summary, const DescriptivesSettings& settings,
                           const std::vector<std::string>& remarks,
                           const std::vector<TimeInterval>& intervals);

} // namespace EmbeddedHV
