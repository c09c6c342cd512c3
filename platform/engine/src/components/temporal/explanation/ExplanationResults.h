#pragma once

#include <string>
#include <vector>

#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ExplanationSettings.h"

namespace EmbeddedHV {

/// The text of "Results.json", docs/result-document.md: the result object "temporalCausalModel"
/// with tables of fit, edges and outliers, for each series of an impact diagram a table and a
/// drawing of it, and with data a chart of each series that a request names. Throws what the
/// explanation's check throws.
std::string explanationResults(const Explanation& explanation,
                               const std::vector<ArtifactRequest>& requests);

} // namespace EmbeddedHV
