#pragma once

#include "steps/StepTable.h"

namespace EmbeddedHV {

/// The component that a step with a namespace calls. Throws JobError for an unknown component and
/// suggests the most similar name.
const StepKind& componentKind(const language::Step& step);

} // namespace EmbeddedHV
