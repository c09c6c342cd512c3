#include "datafile/PrivateFolder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace datafile {
namespace {

constexpr mode_t kPrivateFolderMode = 0700;
constexpr int kMostFolderNames = 100;

base::FileDescriptor openFolder(const std::string& path)
{
    return base::FileDescriptor(
        open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Whether the path still refers to the folder: a sweep may have removed it.
bool isAt(const base::FileDescriptor& folder, const std::string& path)
{
    struct stat own = {};
    struct stat named = {};
    return fstat(folder.get(), &own) == 0 && lstat(path.c_str(), &named) == 0 &&
           own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

void sweepFolder(const std::string& path)
{
    const base::FileDescriptor folder = openFolder(path);
    struct stat state = {};
    if (!folder || fstat(folder.get(), &state) != 0 || state.st_uid != geteuid() ||
        !folder.lockAlone())
        return;
    std::error_code ignored; // the next sweep removes the rest
    if (isAt(folder, path))
        fs::remove_all(path, ignored);
}

void sweep(const std::string& parent, const std::string& prefix)
{
    std::error_code error;
    for (fs::directory_iterator entry(parent, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().native().starts_with(prefix))
            sweepFolder(entry->path().native());
}

/// Returns false if something remains.
bool removeAll(const std::string& path) noexcept
try {
    std::error_code error;
    fs::remove_all(path, error);
    return !error;
} catch (const std::exception&) { // no memory for a path
    return false;
}

} // namespace

PrivateFolder::PrivateFolder(const std::string& parent, const std::string& prefix)
{
    sweep(parent, prefix);
    for (int tries = 0; tries < kMostFolderNames; ++tries) {
        std::string path = parent;
        path.append("/").append(prefix).append("XXXXXX");
        if (!mkdtemp(path.data()))
            break;
        base::FileDescriptor folder = openFolder(path);
        if (!folder && errno != ENOENT) {
            const int reason = errno;
            rmdir(path.c_str());
            errno = reason;
            break;
        }
        // If the file system has no locks, nobody can sweep either.
        if (folder && (folder.lockAlone() || errno != EWOULDBLOCK) && isAt(folder, path)) {
            _path = std::move(path);
            _folder = std::move(folder);
            _owner = getpid();
            return;
        }
    }
    throw std::system_error(errno, std::generic_category(), parent);
}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept
    : _path(std::exchange(other._path, {})), _folder(std::move(other._folder)), _owner(other._owner)
{
}

PrivateFolder& PrivateFolder::operator=(PrivateFolder&& other) noexcept
{
    std::swap(_path, other._path);
    std::swap(_folder, other._folder);
    std::swap(_owner, other._owner);
    return *this;
}

PrivateFolder::~PrivateFolder()
{
    remove();
}

bool PrivateFolder::isOwn() const
{
    return !_path.empty() && _owner == getpid();
}

bool PrivateFolder::remove() noexcept
{
    if (!isOwn())
        return true;
    // Try twice: listing a folder needs memory, which may be short only for a moment. The next
    // process removes the rest.
    if (!removeAll(_path) && !removeAll(_path))
        return false;
    _path.clear();
    _folder = base::FileDescriptor();
    return true;
}

bool isPrivateFolder(const std::string& path)
{
    const base::FileDescriptor folder = openFolder(path);
    struct stat state = {};
    return folder && fstat(folder.get(), &state) == 0 && state.st_uid == geteuid() &&
           (state.st_mode & (S_IRWXG | S_IRWXO)) == 0 && !folder.lockAlone() &&
           errno == EWOULDBLOCK;
}

void makeOwnersFolders(const std::string& path, std::error_code& error)
{
    error.clear();
    if (fs::is_directory(path, error) || path.empty())
        return;
    const std::string parent = fs::path(path).parent_path().native();
    if (parent != path)
        makeOwnersFolders(parent, error);
    error.clear();
    // Another process may create it meanwhile.
    if (mkdir(path.c_str(), kPrivateFolderMode) != 0 && !fs::is_directory(path))
        error = {errno, std::generic_category()};
}

} // namespace datafile
