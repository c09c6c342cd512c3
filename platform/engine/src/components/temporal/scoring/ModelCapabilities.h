#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The step scoring:scoring, which says what a model's scoring reads and gives.
StepResult planModelCapabilities(StepCall& call);

} // namespace EmbeddedHV
