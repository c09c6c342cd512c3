#pragma once

#include <string>
#include <system_error>

#include <sys/types.h>

#include "datafile/FileDescriptor.h"

namespace datafile {

/// A folder for the temporary files of this process: nobody but its user can look into it, and it
/// is removed with the object. The process holds a lock on it meanwhile, so that a later process
/// can tell the folder of a killed one and remove it. One thread at a time.
class PrivateFolder
{
public:
    /// No folder.
    PrivateFolder() = default;
    /// Makes a folder in `parent` whose name begins with `prefix`. First removes the folders of
    /// this prefix and this user that no living process holds. Throws std::system_error.
    PrivateFolder(const std::string& parent, const std::string& prefix);
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    PrivateFolder(PrivateFolder&& other) noexcept;
    PrivateFolder& operator=(PrivateFolder&& other) noexcept;
    ~PrivateFolder();

    /// Empty if there is no folder.
    const std::string& path() const { return _path; }
    /// Removes the folder with all that is in it; false if that fails. The folder that a child
    /// process inherits is its parent's to remove.
    bool remove() noexcept;
    /// Whether this process made the folder.
    bool isOwn() const;

private:
    std::string _path;
    FileDescriptor _folder;
    pid_t _owner = 0;
};

/// Makes a folder and its missing parents, which nobody but their owner can look into. A folder
/// that is there stays as it is.
void makeOwnersFolders(const std::string& path, std::error_code& error);

} // namespace datafile
