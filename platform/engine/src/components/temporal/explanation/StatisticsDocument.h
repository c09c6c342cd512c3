#pragma once

#include <string>
#include <vector>

#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ExplanationSettings.h"

namespace EmbeddedHV {

/// The text of "statJson.json": what is asked for, one artifact for each request, or for each of
/// its targets where an artifact is about one series. docs/tcm.md has the form. Throws what the
/// explanation's check throws.
std::string statisticsDocument(const Explanation& explanation,
                               const std::vector<ArtifactRequest>& requests);

} // namespace EmbeddedHV
