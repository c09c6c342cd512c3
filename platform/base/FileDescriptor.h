#pragma once

#include <cerrno>
#include <cstddef>
#include <utility>

#include <sys/file.h>
#include <unistd.h>

namespace base {

/// Owns an open file of the operating system.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1) : _descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : _descriptor(std::exchange(other._descriptor, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(_descriptor, other._descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (_descriptor >= 0)
            close(_descriptor);
    }

    explicit operator bool() const { return _descriptor >= 0; }
    int get() const { return _descriptor; }
    /// Gives up ownership.
    void release() { _descriptor = -1; }

    /// Locks the file or folder until it is closed, against other processes that also lock it.
    /// Returns false, with errno: EWOULDBLOCK if another process has the lock, another value if the
    /// file system does not support locks.
    bool lockAlone() const { return flock(_descriptor, LOCK_EX | LOCK_NB) == 0; }

    /// Returns false, with errno, if not all bytes could be written.
    bool writeAll(const void* bytes, std::size_t count) const
    {
        const auto* at = static_cast<const char*>(bytes);
        while (count > 0) {
            const ssize_t written = ::write(_descriptor, at, count);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            at += written;
            count -= static_cast<std::size_t>(written);
        }
        return true;
    }

    /// Reads up to `count` bytes; fewer only at the end of the file. Returns -1, with errno, on
    /// failure.
    ssize_t readUpTo(void* bytes, std::size_t count) const
    {
        return readWith(bytes, count, [this](char* at, std::size_t rest, std::size_t) {
            return ::read(_descriptor, at, rest);
        });
    }
    /// The same from an offset, independent of the file position.
    ssize_t readAt(std::size_t offset, void* bytes, std::size_t count) const
    {
        return readWith(bytes, count, [this, offset](char* at, std::size_t rest, std::size_t done) {
            return ::pread(_descriptor, at, rest, static_cast<off_t>(offset + done));
        });
    }

private:
    template <class Read>
    static ssize_t readWith(void* bytes, std::size_t count, Read read)
    {
        auto* at = static_cast<char*>(bytes);
        std::size_t total = 0;
        while (total < count) {
            const ssize_t got = read(at + total, count - total, total);
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return -1;
            if (got == 0)
                break;
            total += static_cast<std::size_t>(got);
        }
        return static_cast<ssize_t>(total);
    }

    int _descriptor;
};

} // namespace base
