#pragma once

#include <string>

#include <sys/stat.h>

#include "base/FileDescriptor.h"

namespace base {

/// An unfinished file in the folder of its destination, under a temporary name. The process locks
/// it as long as the object lives, which shows other processes that it is in use. One thread at a
/// time.
class PartFile
{
public:
    /// Creates no file.
    PartFile() = default;
    /// Creates an empty file in the folder of `destination` with these permissions. First removes
    /// files that killed processes left there. Throws std::system_error.
    PartFile(const std::string& destination, mode_t mode);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    PartFile(PartFile&& other) noexcept;
    PartFile& operator=(PartFile&& other) noexcept;
    /// Removes the file unless it was released.
    ~PartFile();

    explicit operator bool() const { return static_cast<bool>(_file); }
    const std::string& path() const { return _path; }
    int descriptor() const { return _file.get(); }
    /// Gives up the file, which has its final name now.
    void release();

private:
    std::string _path;
    FileDescriptor _file;
};

/// Removes this user's unfinished files in a folder that no living process has locked. Only the
/// lock decides, not the name. Never throws.
void sweepParts(const std::string& folder) noexcept;

} // namespace base
