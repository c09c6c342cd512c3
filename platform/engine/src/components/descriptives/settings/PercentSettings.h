#pragma once

#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The percents whose percentiles are requested: from 0 to 100, ascending, each once. Reads
/// computeCustomPercentiles, computeAllPercentiles and customPercentilesAccuracy. Throws JobError.
std::vector<double> percentsOf(const StepCall& call, const Settings& settings);

} // namespace EmbeddedHV
