#pragma once

#include <string>
#include <system_error>

#include <sys/types.h>

#include "base/FileDescriptor.h"

namespace datafile {

/// A folder for temporary files of this process. Only its user has access, and the destructor
/// removes it. The process locks it, so that a later process can recognise and remove the folder of
/// a killed one. One thread at a time.
class PrivateFolder
{
public:
    /// Creates no folder.
    PrivateFolder() = default;
    /// Creates a folder in `parent` whose name begins with `prefix`. First removes this user's
    /// folders of that prefix that no living process has locked. Throws std::system_error.
    PrivateFolder(const std::string& parent, const std::string& prefix);
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    PrivateFolder(PrivateFolder&& other) noexcept;
    PrivateFolder& operator=(PrivateFolder&& other) noexcept;
    ~PrivateFolder();

    /// Empty if there is no folder.
    const std::string& path() const { return _path; }
    /// Removes the folder and its content. Returns false if that fails. Does nothing in a child
    /// process, whose parent removes the folder.
    bool remove() noexcept;
    /// Whether this process created the folder.
    bool isOwn() const;

private:
    std::string _path;
    base::FileDescriptor _folder;
    pid_t _owner = 0;
};

/// Whether a folder is the private folder of a living process, of this user. Its files do not
/// outlive the process.
bool isPrivateFolder(const std::string& path);

/// Creates a folder and its missing parents, accessible to the owner only. An existing folder is
/// unchanged.
void makeOwnersFolders(const std::string& path, std::error_code& error);

} // namespace datafile
