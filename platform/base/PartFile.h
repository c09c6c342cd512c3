#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include <sys/types.h>

namespace base {

class FileDescriptor;

/// An unfinished file in the folder of its destination, under a temporary name. The process locks
/// it as long as the object lives, which shows other processes that it is in use. One thread at a
/// time. This header is portable, because the library includes it; the implementation needs POSIX.
class PartFile
{
public:
    /// Creates no file.
    PartFile();
    /// Creates an empty file in the folder of `destination` with these permissions. First removes
    /// files that killed processes left there. Throws std::system_error.
    PartFile(const std::string& destination, mode_t mode);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    PartFile(PartFile&& other) noexcept;
    PartFile& operator=(PartFile&& other) noexcept;
    /// Removes the file unless it was released.
    ~PartFile();

    explicit operator bool() const { return _file != nullptr; }
    const std::string& path() const { return _path; }
    /// The open file; -1 if none was created. Owned by the object.
    int descriptor() const;
    /// A stream that writes to the file. The caller closes it. Closing it does not unlock the file.
    /// Returns null, with errno, on failure.
    std::FILE* openStream() const;
    /// Gives the file the permissions of another one. Does nothing unless `path` is a regular file.
    void takePermissions(const std::string& path) const;
    /// Makes the system write the content to the disk. Returns false, with errno, on failure.
    bool sync() const;
    /// Gives up the file, which has its final name now.
    void release();

private:
    std::string _path;
    std::unique_ptr<FileDescriptor> _file; ///< null if no file was created
};

/// Removes this user's unfinished files in a folder that no living process has locked. Only the
/// lock decides, not the name. Never throws.
void sweepParts(const std::string& folder) noexcept;

} // namespace base
