#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `descriptives:descriptives(configuration, _, containers)`: describes the fields of its input,
/// see docs/descriptives.md.
StepResult planDescriptives(StepCall& call);

} // namespace EmbeddedHV
