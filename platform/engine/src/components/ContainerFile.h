#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"

namespace EmbeddedHV {

/// A member of a container: the name and the bytes of an entry of a zip archive.
struct ContainerMember
{
    std::string name;
    std::string content;
};

/// The zip archive that a component leaves in an output container, which has the name of the
/// container only when it is whole.
class ContainerFile
{
public:
    /// Makes nothing yet. Throws JobError if the destination cannot be written.
    ContainerFile(std::string destination, const std::string& component)
        : _component(component), _file(std::move(destination), component)
    {
    }

    const std::string& destination() const { return _file.destination(); }
    /// Writes the archive, not yet under its name. Throws JobError.
    void write(const std::vector<ContainerMember>& members);
    void commit() { _file.commit(); }
    void revoke() { _file.revoke(); }

private:
    [[noreturn]] void refuse(int code) const;

    std::string _component;
    PendingFile _file;
};

} // namespace EmbeddedHV
