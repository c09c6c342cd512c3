#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `OutputComponent:TCMOutputComponent(configuration, input containers, output containers)`: tells
/// what is in a temporal causal model, alone or with the data of the records before it, as
/// docs/tcm.md says.
StepResult planTcmOutput(StepCall& call);

} // namespace EmbeddedHV
