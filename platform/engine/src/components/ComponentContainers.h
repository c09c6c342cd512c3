#pragma once

#include <string>
#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// A container that a component reads or writes, as the job text names it.
struct ComponentContainer
{
    std::string name;
    std::string path; ///< the operating system's
};

/// The containers that the step reads. Throws JobError if the text gives none or a file is given
/// twice, and NotYetWritten if an earlier statement is yet to write one.
std::vector<ComponentContainer> inputContainers(const StepCall& call);

/// The containers that the step writes, without those that are not exported. Throws JobError if
/// the text gives none or a file is given twice. Nothing is announced yet.
std::vector<ComponentContainer> outputContainers(const StepCall& call);

} // namespace EmbeddedHV
