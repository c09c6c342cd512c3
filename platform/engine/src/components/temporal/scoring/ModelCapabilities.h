#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The step scoring:scoring, which describes the input and the output of scoring with a model.
StepResult planModelCapabilities(StepCall& call);

} // namespace EmbeddedHV
