#include "datafile/OutputTarget.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <unistd.h>

#include "base/NativePath.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/SpaceFault.h"

namespace datafile {
namespace {

constexpr mode_t kWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO; // without set-user-id and the like

[[noreturn]] void refuseTarget(const char* id, const std::string& step, const std::string& path,
                               const std::string& reason)
{
    throw Fault(id, {.step = step, .file = path, .what = reason});
}

/// Whether another user may have planted the link: the system does not follow such a link either.
bool isForeignLink(const struct stat& link, const std::string& folder)
{
    struct stat state = {};
    if (stat(folder.c_str(), &state) != 0)
        return true;
    const bool isShared = (state.st_mode & S_ISVTX) != 0 && (state.st_mode & S_IWOTH) != 0;
    return isShared && link.st_uid != geteuid() && link.st_uid != state.st_uid;
}

/// The destination, or its target if it is a link.
std::string followed(const std::string& destination, const std::string& step)
{
    struct stat link = {};
    if (lstat(destination.c_str(), &link) != 0 || !S_ISLNK(link.st_mode))
        return destination;
    if (isForeignLink(link, base::folderOf(destination)))
        refuseTarget(faults::kFileUnwritable, step, destination,
                     "this is a link that another user has made");
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(destination, error);
    if (error)
        refuseTarget(faults::kFileUnwritable, step, destination,
                     "this is a link that leads nowhere");
    return target.string();
}

void checkReplaced(const struct stat& state, const std::string& path,
                   const std::string& destination, const std::string& step)
{
    if (S_ISDIR(state.st_mode))
        refuseTarget(faults::kFileIsFolder, step, destination, "this is a folder, not a file");
    // A device must not be replaced by a file.
    if (!S_ISREG(state.st_mode))
        refuseTarget(faults::kFileUnwritable, step, destination, "this is not a regular file");
    // A rename needs only the folder's permission. Root may write everything, but a file without
    // write bits is meant to be protected.
    if ((state.st_mode & kWriteBits) == 0 || access(path.c_str(), W_OK) != 0)
        refuseTarget(faults::kFileUnwritable, step, destination,
                     "the file is protected against writing");
}

} // namespace

OutputTarget outputTarget(const std::string& destination, const std::string& step)
{
    struct stat state = {};
    if (stat(base::folderOf(destination).c_str(), &state) != 0 || !S_ISDIR(state.st_mode))
        refuseTarget(faults::kFolderMissing, step, destination,
                     "there is no folder " + base::folderOf(destination));
    if (base::fileNameOf(destination).empty())
        refuseTarget(faults::kFileIsFolder, step, destination, "this is a folder, not a file");
    OutputTarget target;
    target.path = followed(destination, step);
    if (stat(target.path.c_str(), &state) == 0) {
        checkReplaced(state, target.path, destination, step);
        target.replaced = state;
    } else if (errno != ENOENT) {
        refuseOutput(step, destination, errno);
    }
    if (access(base::folderOf(target.path).c_str(), W_OK | X_OK) != 0)
        refuseOutput(step, destination, errno);
    return target;
}

bool keepOwnership(int descriptor, const struct stat& replaced)
{
    mode_t mode = replaced.st_mode & kPermissions;
    // Only root can change the owner; a member of the group can keep the group.
    const bool keepsGroup = fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0 ||
                            fchown(descriptor, static_cast<uid_t>(-1), replaced.st_gid) == 0;
    if (!keepsGroup)
        mode &= ~static_cast<mode_t>(S_IRWXG);
    return fchmod(descriptor, mode) == 0;
}

void refuseOutput(const std::string& step, const std::string& path, int code)
{
    if (const char* const full = spaceFaultOf(code))
        refuseTarget(faults::kDiskFull, step, path, full);
    refuseTarget(faults::kFileUnwritable, step, path,
                 "the file cannot be written: " + std::generic_category().message(code));
}

} // namespace datafile
