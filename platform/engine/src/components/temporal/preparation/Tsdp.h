#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// `tsdp:tsdp(configuration, _, container)`: makes series at equal intervals of time from records,
/// as docs/tcm.md says.
StepResult planTsdp(StepCall& call);
/// The fields of the input that the component reads.
Fields preparedFields(StepCall& call);

} // namespace EmbeddedHV
