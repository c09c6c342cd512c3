#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `OutputComponent:TCMOutputComponent(configuration, input containers, output containers)`:
/// explains a temporal causal model, alone or with the data of the records before it. docs/tcm.md
/// describes the result.
StepResult planTcmOutput(StepCall& call);

} // namespace EmbeddedHV
