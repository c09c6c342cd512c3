#pragma once

#include <string>

#include "datafile/OutputTarget.h"
#include "datafile/PartFile.h"

namespace datafile {

/// A file under construction: it has a name of its own in the destination's folder until it is
/// whole, and takes its final name then. Left unfinished, it is removed; what a killed process
/// leaves, a later one removes. A file that it replaces keeps its permissions, its group and, where
/// the system allows it, its owner, from the first byte on: nobody can read what is written who
/// could not read the file before. One thread at a time.
class PendingFile
{
public:
    /// Looks at the destination as outputTarget does; nothing is made yet. Throws Fault.
    PendingFile(std::string destination, std::string step);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// Where to write: an empty file, made at the first call. Open it without making a new one, or
    /// by cutting it short; a file in its place would not have its lock and its permissions. Throws
    /// Fault.
    const std::string& path();
    const std::string& destination() const { return _destination; }
    /// Replaces the content by a text. Throws Fault.
    void write(const std::string& text);
    /// Waits until the content is on the disk, then gives the file its final name. Throws Fault, or
    /// what an allocation throws; the file does not have its name then.
    void commit();
    /// Takes the committed file away again: its companion could not be committed.
    void revoke();

    /// The fault of a file that could not be written.
    [[noreturn]] static void refuse(const std::string& step, const std::string& path, int code)
    {
        refuseOutput(step, path, code);
    }

private:
    std::string _destination;
    std::string _step;
    OutputTarget _target;
    PartFile _part;
    bool _committed = false;
};

} // namespace datafile
