#pragma once

#include <string>

#include <sys/stat.h>

#include "datafile/FileDescriptor.h"

namespace datafile {

/// A file under construction, beside its destination and under a name of its own. The process holds
/// a lock on it as long as the object lives, which tells other processes that somebody still writes
/// it. One thread at a time.
class PartFile
{
public:
    /// No file yet.
    PartFile() = default;
    /// Makes an empty file in the folder of `destination`, with the given permissions, and first
    /// removes what processes left there that were killed. Throws std::system_error.
    PartFile(const std::string& destination, mode_t mode);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    PartFile(PartFile&& other) noexcept;
    PartFile& operator=(PartFile&& other) noexcept;
    /// Removes the file, unless release() has let it go.
    ~PartFile();

    explicit operator bool() const { return static_cast<bool>(_file); }
    const std::string& path() const { return _path; }
    int descriptor() const { return _file.get(); }
    /// Gives the file up: it has another name by now.
    void release();

private:
    std::string _path;
    FileDescriptor _file;
};

/// Removes the unfinished files in a folder that no living process holds, as far as they belong to
/// this user. A file counts by its lock: the name alone decides nothing. Never throws.
void sweepParts(const std::string& folder) noexcept;

} // namespace datafile
