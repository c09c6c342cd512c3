#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// How many inputs a step takes.
enum class StepInputs
{
    None,
    AtMostOne,
    One,
    Tagged ///< one or more, told apart by tag
};

/// What a step's arguments are.
enum class StepArguments
{
    Configuration,          ///< an object
    OptionalConfiguration,  ///< an object or an open place
    ConfigurationAndExport, ///< the same, and a container that the step writes
    Lambda,                 ///< an open place and a lambda
    Component,              ///< an object, an open place, output containers
    ComponentWithInputs     ///< an object, input containers, output containers
};

/// A step that this engine runs.
struct StepKind
{
    const char* name;
    StepInputs inputs;
    StepArguments arguments;
    StepResult (*plan)(StepCall&);
};

/// The step of that name. Throws JobError for a name that is no step, with the nearest name, and
/// for a component.
const StepKind& stepKind(const language::Step& step);

} // namespace EmbeddedHV
