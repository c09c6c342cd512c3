#include "StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

#include "CommandFault.h"
#include "InterruptWatch.h"

namespace {

constexpr int kLookMilliseconds = 50;

/// A file descriptor that is closed at the end.
class Descriptor
{
public:
    explicit Descriptor(int number) : _number(number) {}
    ~Descriptor()
    {
        if (_number >= 0)
            close(_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return _number; }

private:
    int _number;
};

[[noreturn]] void fail(ExitStatus status, const std::string& what)
{
    throw CommandFault(status, what + ": " + std::strerror(errno));
}

void waitFor(int descriptor, short events, const InterruptWatch& watch)
{
    pollfd waited{descriptor, events, 0};
    while (poll(&waited, 1, kLookMilliseconds) <= 0)
        watch.check();
}

/// Reads what is there, at most the size of a chunk; 0 at the end.
template <std::size_t size>
std::size_t readSome(int descriptor, std::array<char, size>& chunk)
{
    ssize_t count = 0;
    do
        count = read(descriptor, chunk.data(), chunk.size());
    while (count < 0 && errno == EINTR);
    if (count < 0)
        fail(ExitStatus::Input, "standard input cannot be read");
    return static_cast<std::size_t>(count);
}

void writeSome(int descriptor, const char* data, std::size_t size, const std::string& what)
{
    while (size > 0) {
        const ssize_t count = write(descriptor, data, size);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            fail(ExitStatus::JobFailed, what + " cannot be written");
        const std::size_t written = count < 0 ? 0 : static_cast<std::size_t>(count);
        data += written;
        size -= written;
    }
}

} // namespace

void fetchStandardInput(const std::string& path, const InterruptWatch& watch)
{
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (file.number() < 0)
        fail(ExitStatus::JobFailed, path + ": a temporary file cannot be written");
    std::array<char, 65536> chunk{};
    for (;;) {
        waitFor(STDIN_FILENO, POLLIN, watch);
        const std::size_t size = readSome(STDIN_FILENO, chunk);
        if (size == 0)
            return;
        writeSome(file.number(), chunk.data(), size, path);
    }
}

void deliverToStandardOutput(const std::string& path, const InterruptWatch& watch)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        fail(ExitStatus::JobFailed, path + ": the job's result cannot be read");
    // A pipe that poll calls ready takes this much without blocking.
    std::array<char, PIPE_BUF> chunk{};
    for (std::size_t size = readSome(file.number(), chunk); size > 0;
         size = readSome(file.number(), chunk)) {
        waitFor(STDOUT_FILENO, POLLOUT, watch);
        writeSome(STDOUT_FILENO, chunk.data(), size, "standard output");
    }
}
