#pragma once

#include <optional>
#include <string>

#include <sys/stat.h>

namespace datafile {

/// The destination of a file, and the file that it replaces.
struct OutputTarget
{
    std::string path; ///< with links resolved
    /// The existing file, if there is one.
    std::optional<struct stat> replaced;
};

/// Checks a destination. Follows and keeps links. Refuses a link to a missing file, a link that
/// another user has put into a world-writable folder, folders, devices, write-protected files, and
/// folders that cannot be written. Throws Fault with the step and the file.
OutputTarget outputTarget(const std::string& destination, const std::string& step);

/// Copies permissions, group and, where the system allows it, owner of the replaced file. Omits
/// permissions that another group would get. Returns false, with errno, if the permissions cannot
/// be set.
bool keepOwnership(int descriptor, const struct stat& replaced);

/// Throws the fault of a file that could not be written; `code` is an errno.
[[noreturn]] void refuseOutput(const std::string& step, const std::string& path, int code);

} // namespace datafile
