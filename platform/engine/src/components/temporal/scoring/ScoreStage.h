#pragma once

#include <string>

#include "runtime/DataModel.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The step tcm:score: scores targets by their causal equations.
StepResult planTcmScore(StepCall& call);
/// The step tcm:ar: scores series by their own past.
StepResult planTcmAr(StepCall& call);

/// The field that is 1 in records beyond the data, 0 in the others.
inline constexpr const char* kFutureFlagField = "$FutureFlag";

/// The fields that scoring gives for series of these ids, with or without their actual values.
Fields scoredFields(const std::vector<std::string>& ids, bool givesActual);

/// The path of the one container that the step reads a model from. Throws JobError unless there is
/// one.
std::string modelPathOf(const StepCall& call);

} // namespace EmbeddedHV
