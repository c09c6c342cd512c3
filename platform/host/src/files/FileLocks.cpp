#include "files/FileLocks.h"

#include <charconv>
#include <cstring>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/FileDescriptor.h"

namespace {

base::FileDescriptor opened(const std::string& native, int mode)
{
    return base::FileDescriptor(::open(native.c_str(), mode | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

bool isLockedByOther(int descriptor)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return descriptor >= 0 && ::fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

struct CloseDirectory
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// A descriptor of this process for the same file, or -1.
int ownDescriptor(const struct stat& file)
{
    // The standard library's iterator terminates the process without memory for a name.
    const std::unique_ptr<DIR, CloseDirectory> descriptors(::opendir("/proc/self/fd"));
    const dirent* entry = nullptr;
    while (descriptors && (entry = ::readdir(descriptors.get()))) {
        int number = -1;
        std::from_chars(entry->d_name, entry->d_name + std::strlen(entry->d_name), number);
        struct stat other = {};
        if (number >= 0 && ::fstat(number, &other) == 0 && other.st_dev == file.st_dev &&
            other.st_ino == file.st_ino)
            return number;
    }
    return -1;
}

} // namespace

FileLocks probeFileLocks(const std::string& native)
{
    FileLocks locks;
    struct stat file = {};
    if (::stat(native.c_str(), &file) != 0)
        return locks;
    // Closing another descriptor of the file would release every lock of this process on it.
    if (const int own = ownDescriptor(file); own >= 0) {
        locks.inUse = isLockedByOther(own);
        return locks;
    }
    const base::FileDescriptor writing = opened(native, O_WRONLY);
    locks.writable = static_cast<bool>(writing);
    locks.inUse = isLockedByOther(locks.writable ? writing.get() : opened(native, O_RDONLY).get());
    return locks;
}
