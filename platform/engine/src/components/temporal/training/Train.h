#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The component tcm:train: trains a temporal causal model on prepared records and writes its file.
StepResult planTrain(StepCall& call);

} // namespace EmbeddedHV
