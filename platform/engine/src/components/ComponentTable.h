#pragma once

#include "steps/StepTable.h"

namespace EmbeddedHV {

/// The component that a step with a name space calls. Throws JobError for one that this engine does
/// not run, with the nearest name of those that it does.
const StepKind& componentKind(const language::Step& step);

} // namespace EmbeddedHV
