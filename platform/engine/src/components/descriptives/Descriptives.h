#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `descriptives:descriptives(configuration, _, containers)`: describes the fields of its input,
/// see docs/descriptives.md.
StepResult planDescriptives(StepCall& call);
/// The fields of the input that the component reads.
Fields describedFields(StepCall& call);

} // namespace EmbeddedHV
