#include "hvhost/base/OutputPath.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"

namespace fs = std::filesystem;

std::string outputPath(const std::string& name, bool mayReplace)
{
    checkPath(name);
    std::error_code error;
    fs::path path = fs::absolute(name).lexically_normal();
    // If the file itself is a link, the writer decides what to do.
    if (const fs::path parent = fs::weakly_canonical(path.parent_path(), error); !error)
        path = parent / path.filename();
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status))
        throw CommandFault(ExitStatus::Usage, name + ": this is a folder");
    const bool isThere = fs::status_known(status) && fs::exists(status);
    if (isThere && !fs::is_regular_file(status))
        throw CommandFault(ExitStatus::Usage, name + ": this is not a regular file",
                           "- means standard output");
    if (isThere && !mayReplace)
        throw CommandFault(ExitStatus::Usage, name + ": the file exists", "--force replaces it");
    const fs::path folder = path.parent_path();
    if (!fs::is_directory(folder, error))
        throw CommandFault(ExitStatus::JobFailed,
                           name + ": the folder " + folder.string() + " does not exist");
    if (access(folder.c_str(), W_OK) != 0 && errno == EROFS)
        throw CommandFault(ExitStatus::JobFailed,
                           name + ": no file can be written in its folder: the file system is "
                                  "read-only");
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        throw CommandFault(ExitStatus::JobFailed, name + ": no file can be written in its folder",
                           "the permissions of the folder do not allow it");
    return path.string();
}
