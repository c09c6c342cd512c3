#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdio_ext.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

#include "Decision.h"

// Replacements for the file functions of the C library.

using faultlayer::isToFail;
using faultlayer::Kind;

#define EXPORTED [[gnu::visibility("default")]]
#define CALLER __builtin_return_address(0)
/// The C library's function with the same name.
#define REAL(function) reinterpret_cast<decltype(&::function)>(realFunction(#function))

namespace {

void* realFunction(const char* name)
{
    return dlsym(RTLD_NEXT, name);
}

template <class Result>
Result failed(int reason, Result result)
{
    errno = reason;
    return result;
}

int reasonOfOpen(bool creates)
{
    return creates ? ENOSPC : EMFILE;
}

/// Sets the state of the stream as after a failed read or write.
template <class Result>
Result failed(std::FILE* stream, int reason, Result result)
{
    constexpr int kErrorFlag = 0x20;
    stream->_flags |= kErrorFlag;
    return failed(reason, result);
}

bool failsToWrite(int file, const void* caller)
{
    return file != STDERR_FILENO && isToFail(Kind::Write, caller);
}

bool failsToWrite(std::FILE* stream, const void* caller)
{
    return failsToWrite(fileno(stream), caller);
}

} // namespace

// As in open itself, `mode` exists only if the call may create the file.
#define OPENER(function)                                                                           \
    EXPORTED int function(const char* path, int flags, ...)                                        \
    {                                                                                              \
        std::va_list more;                                                                         \
        va_start(more, flags);                                                                     \
        const unsigned mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(more, unsigned) : 0;        \
        va_end(more);                                                                              \
        static const auto real = REAL(function);                                                   \
        return isToFail(Kind::Open, CALLER) ? failed(reasonOfOpen(flags & O_CREAT), -1)            \
                                            : real(path, flags, mode);                             \
    }
#define OPENER_AT(function)                                                                        \
    EXPORTED int function(int folder, const char* path, int flags, ...)                            \
    {                                                                                              \
        std::va_list more;                                                                         \
        va_start(more, flags);                                                                     \
        const unsigned mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(more, unsigned) : 0;        \
        va_end(more);                                                                              \
        static const auto real = REAL(function);                                                   \
        return isToFail(Kind::Open, CALLER) ? failed(reasonOfOpen(flags & O_CREAT), -1)            \
                                            : real(folder, path, flags, mode);                     \
    }
#define STREAM_OPENER(function)                                                                    \
    EXPORTED std::FILE* function(const char* path, const char* mode)                               \
    {                                                                                              \
        static const auto real = REAL(function);                                                   \
        if (isToFail(Kind::Open, CALLER))                                                          \
            return failed(reasonOfOpen(*mode != 'r'), static_cast<std::FILE*>(nullptr));           \
        return real(path, mode);                                                                   \
    }
#define SYNCER(function)                                                                           \
    EXPORTED int function(int file)                                                                \
    {                                                                                              \
        static const auto real = REAL(function);                                                   \
        return isToFail(Kind::Sync, CALLER) ? failed(EIO, -1) : real(file);                        \
    }

extern "C" {
OPENER(open)
OPENER(open64)
OPENER_AT(openat)
OPENER_AT(openat64)
STREAM_OPENER(fopen)
STREAM_OPENER(fopen64)
SYNCER(fsync)
SYNCER(fdatasync)

EXPORTED ssize_t write(int file, const void* data, std::size_t size)
{
    static const auto real = REAL(write);
    return failsToWrite(file, CALLER) ? failed(ENOSPC, ssize_t{-1}) : real(file, data, size);
}
EXPORTED ssize_t pwrite(int file, const void* data, std::size_t size, off_t offset)
{
    static const auto real = REAL(pwrite);
    return failsToWrite(file, CALLER) ? failed(ENOSPC, ssize_t{-1})
                                      : real(file, data, size, offset);
}
EXPORTED ssize_t pwrite64(int file, const void* data, std::size_t size, off64_t offset)
{
    static const auto real = REAL(pwrite64);
    return failsToWrite(file, CALLER) ? failed(ENOSPC, ssize_t{-1})
                                      : real(file, data, size, offset);
}
EXPORTED ssize_t writev(int file, const iovec* pieces, int count)
{
    static const auto real = REAL(writev);
    return failsToWrite(file, CALLER) ? failed(ENOSPC, ssize_t{-1}) : real(file, pieces, count);
}
EXPORTED ssize_t read(int file, void* data, std::size_t size)
{
    static const auto real = REAL(read);
    return isToFail(Kind::Read, CALLER) ? failed(EIO, ssize_t{-1}) : real(file, data, size);
}
EXPORTED ssize_t pread(int file, void* data, std::size_t size, off_t offset)
{
    static const auto real = REAL(pread);
    return isToFail(Kind::Read, CALLER) ? failed(EIO, ssize_t{-1}) : real(file, data, size, offset);
}
EXPORTED ssize_t pread64(int file, void* data, std::size_t size, off64_t offset)
{
    static const auto real = REAL(pread64);
    return isToFail(Kind::Read, CALLER) ? failed(EIO, ssize_t{-1}) : real(file, data, size, offset);
}
EXPORTED ssize_t readv(int file, const iovec* pieces, int count)
{
    static const auto real = REAL(readv);
    return isToFail(Kind::Read, CALLER) ? failed(EIO, ssize_t{-1}) : real(file, pieces, count);
}
EXPORTED std::size_t fwrite(const void* data, std::size_t size, std::size_t count,
                            std::FILE* stream)
{
    static const auto real = REAL(fwrite);
    return failsToWrite(stream, CALLER) ? failed(stream, ENOSPC, std::size_t{0})
                                        : real(data, size, count, stream);
}
EXPORTED int fflush(std::FILE* stream)
{
    static const auto real = REAL(fflush);
    // If there is nothing to write, it cannot fail.
    const bool writes = stream && __fpending(stream) > 0;
    return writes && failsToWrite(stream, CALLER) ? failed(stream, ENOSPC, EOF) : real(stream);
}
EXPORTED std::size_t fread(void* data, std::size_t size, std::size_t count, std::FILE* stream)
{
    static const auto real = REAL(fread);
    return isToFail(Kind::Read, CALLER) ? failed(stream, EIO, std::size_t{0})
                                        : real(data, size, count, stream);
}
EXPORTED int rename(const char* from, const char* to)
{
    static const auto real = REAL(rename);
    return isToFail(Kind::Rename, CALLER) ? failed(EIO, -1) : real(from, to);
}
EXPORTED int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                       unsigned flags)
{
    static const auto real = REAL(renameat2);
    return isToFail(Kind::Rename, CALLER) ? failed(EIO, -1)
                                          : real(fromFolder, from, toFolder, to, flags);
}
EXPORTED int renameat(int fromFolder, const char* from, int toFolder, const char* to)
{
    static const auto real = REAL(renameat);
    return isToFail(Kind::Rename, CALLER) ? failed(EIO, -1) : real(fromFolder, from, toFolder, to);
}
EXPORTED int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                            void* (*work)(void*), void* argument)
{
    static const auto real = REAL(pthread_create);
    return isToFail(Kind::Thread, CALLER) ? EAGAIN : real(thread, attributes, work, argument);
}
}
