#pragma once

#include <optional>
#include <string>

#include <sys/stat.h>

namespace datafile {

/// Where a file is to go, and the file that it replaces there.
struct OutputTarget
{
    std::string path; ///< what the name leads to: links are followed
    /// The file that is there; nothing if there is none.
    std::optional<struct stat> replaced;
};

/// Looks at a destination. A link is followed, and stays; one that leads nowhere, or that another
/// user has put into a folder that everybody may write to, is refused. So are folders, devices,
/// files that are protected against writing, and folders that take no file. Throws Fault that names
/// the step and the file.
OutputTarget outputTarget(const std::string& destination, const std::string& step);

/// Gives a file the permissions, the group and, where the system allows it, the owner of the one
/// that it replaces. Permissions that would go to another group are left out. False, with errno
/// set, if the permissions cannot be set.
bool keepOwnership(int descriptor, const struct stat& replaced);

/// The fault of a file that could not be written; `code` is the system's, as errno.
[[noreturn]] void refuseOutput(const std::string& step, const std::string& path, int code);

} // namespace datafile
