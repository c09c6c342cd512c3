#pragma once

#include <string>
#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// A container in the job text that a component reads or writes.
struct ComponentContainer
{
    std::string name;
    std::string path; ///< in the operating system's form
};

/// The containers that the step reads. Throws JobError if the text has none or names a file twice.
/// Throws NotYetWritten if an earlier statement has not yet written one.
std::vector<ComponentContainer> inputContainers(const StepCall& call);

/// The containers that the step writes, except those that are not exported. Throws JobError if the
/// text has none or names a file twice. Does not announce the files.
std::vector<ComponentContainer> outputContainers(const StepCall& call);

} // namespace EmbeddedHV
