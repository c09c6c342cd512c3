#pragma once

#include <deque>
#include <string>
#include <vector>

#include "components/ContainerFile.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// The archives that a component leaves in its output containers. They get their names together, or
/// none does. One thread at a time.
class ContainerFiles
{
public:
    /// Announces the files, so that a later step of the job does not read what was there before.
    /// The context is borrowed. Throws JobError if a destination cannot be written.
    ContainerFiles(JobContext& context, const std::vector<std::string>& destinations,
                   const std::string& component);

    /// Writes the archive of the destination with this number, not yet under its name. Throws
    /// JobError.
    void write(std::size_t number, const std::vector<ContainerMember>& members)
    {
        _files[number].write(members);
    }
    /// Gives all files their names. Throws JobError.
    void publish();

private:
    JobContext& _context;
    std::deque<ContainerFile> _files; ///< a deque, since a file neither moves nor copies
};

} // namespace EmbeddedHV
