#include "base/PartFile.h"

#include <atomic>
#include <cerrno>
#include <exception>
#include <filesystem>
#include <mutex>
#include <random>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/FileDescriptor.h"
#include "base/NativePath.h"

namespace base {
namespace {

constexpr std::string_view kMark = ".hv-"; ///< precedes the numbers that make a name unique
constexpr std::string_view kEnding = ".part";
constexpr int kMostPartNames = 100;

/// Unique in this process, and very probably unlike names of other processes.
std::string newName(const std::string& destination)
{
    static std::atomic<unsigned> counter = 0;
    static const unsigned seed = std::random_device{}();
    constexpr std::size_t kMostOfName = 180; // names end at 255 bytes
    std::string name = folderOf(destination) + "/.";
    name += fileNameOf(destination).substr(0, kMostOfName);
    name += kMark;
    name += std::to_string(getpid()) + "-" + std::to_string(seed) + "-" + std::to_string(++counter);
    name += kEnding;
    return name;
}

bool isPartName(std::string_view name)
{
    const auto mark = name.rfind(kMark);
    if (!name.starts_with('.') || !name.ends_with(kEnding) || mark == std::string_view::npos)
        return false;
    name.remove_suffix(kEnding.size());
    return name.find_first_not_of("0123456789-", mark + kMark.size()) == std::string_view::npos;
}

/// Whether the file still has its name. A sweep may remove it between its creation and its lock.
bool isNamed(const FileDescriptor& file)
{
    struct stat state = {};
    return fstat(file.get(), &state) == 0 && state.st_nlink > 0;
}

/// Removes a file with the name of an unfinished one, if it is this user's and can be locked.
void sweepPart(const std::string& path)
{
    const FileDescriptor file(
        open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat state = {};
    if (!file || fstat(file.get(), &state) != 0 || !S_ISREG(state.st_mode) ||
        state.st_uid != geteuid() || !file.lockAlone())
        return;
    // Its writer may have renamed it and ended just before the lock was released.
    struct stat named = {};
    if (lstat(path.c_str(), &named) == 0 && named.st_ino == state.st_ino &&
        named.st_dev == state.st_dev)
        unlink(path.c_str());
}

/// Sweeps a folder once per process, because listing a large one is slow.
void sweepOnce(const std::string& folder)
{
    static std::mutex mutex;
    static std::set<std::string> swept;
    {
        const std::lock_guard guard(mutex);
        if (!swept.insert(folder).second)
            return;
    }
    sweepParts(folder);
}

} // namespace

void sweepParts(const std::string& folder) noexcept
try {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (isPartName(entry->path().filename().native()))
            sweepPart(entry->path().native());
} catch (const std::exception&) {
    // The next sweep removes the rest.
    return;
}

PartFile::PartFile() = default;

PartFile::PartFile(const std::string& destination, mode_t mode)
{
    sweepOnce(folderOf(destination));
    // Before there is a file that a failure would leave.
    auto held = std::make_unique<FileDescriptor>();
    for (int tries = 0; tries < kMostPartNames; ++tries) {
        std::string path = newName(destination);
        FileDescriptor file(
            open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (!file && errno != EEXIST)
            break;
        // If the file system has no locks, nobody can sweep either.
        if (file && (file.lockAlone() || errno != EWOULDBLOCK) && isNamed(file)) {
            _path = std::move(path);
            *held = std::move(file);
            _file = std::move(held);
            return;
        }
    }
    throw std::system_error(errno, std::generic_category(), destination);
}

PartFile::PartFile(PartFile&& other) noexcept = default;

PartFile& PartFile::operator=(PartFile&& other) noexcept
{
    std::swap(_path, other._path);
    std::swap(_file, other._file);
    return *this;
}

PartFile::~PartFile()
{
    if (_file)
        unlink(_path.c_str());
}

int PartFile::descriptor() const
{
    return _file ? _file->get() : -1;
}

// The stream gets a duplicate of the descriptor: the original holds the lock.
std::FILE* PartFile::openStream() const
{
    FileDescriptor duplicate(fcntl(descriptor(), F_DUPFD_CLOEXEC, 0));
    std::FILE* const stream = duplicate ? fdopen(duplicate.get(), "wb") : nullptr;
    if (stream != nullptr)
        duplicate.release();
    return stream;
}

void PartFile::takePermissions(const std::string& path) const
{
    constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
    struct stat other = {};
    if (lstat(path.c_str(), &other) == 0 && S_ISREG(other.st_mode))
        fchmod(descriptor(), other.st_mode & kPermissions);
}

bool PartFile::sync() const
{
    return fsync(descriptor()) == 0;
}

void PartFile::release()
{
    _file.reset();
}

} // namespace base
