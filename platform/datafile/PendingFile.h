#pragma once

#include <string>

#include "base/PartFile.h"
#include "datafile/OutputTarget.h"

namespace datafile {

/// A file that is written under a temporary name in the destination's folder and renamed when it is
/// complete. An unfinished file is removed; the remains of a killed process are removed by a later
/// one. It takes over permissions, group and, where the system allows it, owner of the file that it
/// replaces, before the first byte is written, so that nobody can read it who could not read the
/// old file. One thread at a time.
class PendingFile
{
public:
    /// Checks the destination with outputTarget and creates nothing. Throws Fault.
    PendingFile(std::string destination, std::string step);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// The path to write to. The first call creates an empty file. Open it without creating a new
    /// file, or truncate it: another file in its place would lack its lock and permissions. Throws
    /// Fault.
    const std::string& path();
    const std::string& destination() const { return _destination; }
    /// Replaces the content by a text. Throws Fault.
    void write(const std::string& text);
    /// Flushes the content to disk, unless the folder is temporary, then renames the file. Throws
    /// Fault, or std::bad_alloc; the file then does not have its final name.
    void commit();
    /// Removes the committed file, because a related file could not be committed.
    void revoke();

    /// Throws the fault of a file that could not be written.
    [[noreturn]] static void refuse(const std::string& step, const std::string& path, int code)
    {
        refuseOutput(step, path, code);
    }

private:
    std::string _destination;
    std::string _step;
    OutputTarget _target;
    base::PartFile _part;
    bool _committed = false;
};

} // namespace datafile
