#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `rtsdp:rtsdp(configuration, container, _)`: gives prepared or scored records the names of their
/// series and their points of time back, as docs/tcm.md says.
StepResult planRtsdp(StepCall& call);

} // namespace EmbeddedHV
