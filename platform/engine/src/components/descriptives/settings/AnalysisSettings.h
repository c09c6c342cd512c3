#pragma once

#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The analyses that the configuration requests in addition to the summaries.
struct AnalysisSettings
{
    std::vector<double> percents; ///< from 0 to 100, ascending, each once
};

/// Reads the settings of the analyses. Throws JobError.
AnalysisSettings analysisSettings(const StepCall& call, const Settings& settings);

} // namespace EmbeddedHV
