#pragma once

#include <deque>
#include <string>
#include <vector>

#include "components/ContainerFile.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// The archives that a component writes to its output containers. Either all get their names, or
/// none does. One thread at a time.
class ContainerFiles
{
public:
    /// Announces the files, so that a later step of the job does not read older files of these
    /// names. Borrows the context. Throws JobError if a destination is not writable.
    ContainerFiles(JobContext& context, const std::vector<std::string>& destinations,
                   const std::string& component);

    /// Writes the archive with this number under a temporary name. Throws JobError.
    void write(std::size_t number, const std::vector<ContainerMember>& members)
    {
        _files[number].write(members);
    }
    /// Gives all files their final names. Throws JobError.
    void publish();

private:
    JobContext& _context;
    std::deque<ContainerFile> _files; ///< a deque, because a file can neither move nor copy
};

} // namespace EmbeddedHV
