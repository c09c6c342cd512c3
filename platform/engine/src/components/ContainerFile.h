#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"

namespace EmbeddedHV {

/// A member of a container: an entry of a zip archive.
struct ContainerMember
{
    std::string name;
    std::string content;
};

/// The zip archive that a component writes to an output container. It gets the container's name
/// only when it is complete.
class ContainerFile
{
public:
    /// Creates no file yet. Throws JobError if the destination is not writable.
    ContainerFile(std::string destination, const std::string& component)
        : _component(component), _file(std::move(destination), component)
    {
    }

    const std::string& destination() const { return _file.destination(); }
    /// Writes the archive under a temporary name. Throws JobError.
    void write(const std::vector<ContainerMember>& members);
    void commit() { _file.commit(); }
    void revoke() { _file.revoke(); }

private:
    [[noreturn]] void refuse(int code) const;

    std::string _component;
    PendingFile _file;
};

} // namespace EmbeddedHV
