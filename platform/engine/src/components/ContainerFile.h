#pragma once

#include <string>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"

namespace EmbeddedHV {

/// The zip archive that a component leaves in an output container: one member, and the name of the
/// container only when it is whole.
class ContainerFile
{
public:
    /// Makes nothing yet. Throws JobError if the destination cannot be written.
    ContainerFile(std::string destination, std::string member, const std::string& component)
        : _component(component), _member(std::move(member)),
          _file(std::move(destination), component)
    {
    }

    const std::string& destination() const { return _file.destination(); }
    /// Writes the archive, not yet under its name. Throws JobError.
    void write(const std::string& content);
    void commit() { _file.commit(); }
    void revoke() { _file.revoke(); }

private:
    [[noreturn]] void refuse(int code) const;

    std::string _component;
    std::string _member;
    PendingFile _file;
};

} // namespace EmbeddedHV
