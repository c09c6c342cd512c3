#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `descriptives:descriptives(configuration, _, containers)`: describes the fields of its input, as
/// docs/descriptives.md says.
StepResult planDescriptives(StepCall& call);

} // namespace EmbeddedHV
