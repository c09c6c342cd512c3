#pragma once

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The number of inputs of a step.
enum class StepInputs
{
    None,
    AtMostOne,
    One,
    Tagged ///< one or more, distinguished by tags
};

/// The arguments of a step.
enum class StepArguments
{
    Configuration,          ///< an object
    OptionalConfiguration,  ///< an object or a placeholder
    ConfigurationAndExport, ///< the same, and a container that the step writes
    Lambda,                 ///< a placeholder and a lambda
    Component,              ///< an object, a placeholder, output containers
    ComponentWithInputs     ///< an object, input containers, output containers
};

/// A step that this engine supports.
struct StepKind
{
    const char* name;
    StepInputs inputs;
    StepArguments arguments;
    StepResult (*plan)(StepCall&);
    /// The fields of the input that a component reads. Null: all.
    Fields (*fieldsRead)(StepCall&) = nullptr;
};

/// Finds the component that a step with a namespace calls. Throws JobError.
using ComponentLookup = const StepKind& (*)(const language::Step& step);

/// The step with this name, or its component. Throws JobError for an unknown name and suggests the
/// most similar one.
const StepKind& stepKind(const language::Step& step, ComponentLookup components);

} // namespace EmbeddedHV
