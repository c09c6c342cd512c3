#include "hvhost/base/StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <iostream>
#include <optional>
#include <string_view>

#include "base/FileDescriptor.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/TerminalFilter.h"

namespace {

constexpr int kLookMilliseconds = 50;
// If poll reports that a pipe is ready, a write of this size does not block.
constexpr std::size_t kPipeSpace = PIPE_BUF;

[[noreturn]] void fail(ExitStatus status, const std::string& what)
{
    throw CommandFault(status, what + ": " + std::strerror(errno));
}

/// If the reader has ended, like `head`, the failure is not reported.
[[noreturn]] void failToPrint(const std::string& reason)
{
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    if (poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0)
        throw CommandFault(ExitStatus::NoReader, "standard output has no reader");
    throw CommandFault(ExitStatus::JobFailed, "standard output cannot be written" + reason);
}

void waitFor(int descriptor, short events, const InterruptWatch& watch)
{
    pollfd waited{descriptor, events, 0};
    // Check the watch first. A stream that is always ready must not prevent a stop.
    do
        watch.check();
    while (poll(&waited, 1, kLookMilliseconds) <= 0);
}

/// How long a stopped command waits for a reader of its messages.
constexpr std::chrono::milliseconds kLastWait(500);

bool isReady(int descriptor)
{
    pollfd waited{descriptor, POLLOUT, 0};
    return poll(&waited, 1, kLookMilliseconds) > 0;
}

/// Waits until standard error takes bytes. Returns false if the command was stopped meanwhile.
bool waitForReaderOfMessages()
{
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> stopped;
    while (!isReady(STDERR_FILENO)) {
        if (!InterruptWatch::isStopped())
            continue;
        if (!stopped)
            stopped = Clock::now();
        if (Clock::now() - *stopped >= kLastWait)
            return false;
    }
    return true;
}

/// Reads the available bytes, at most one chunk. Returns 0 at the end.
template <std::size_t size>
std::size_t readSome(int descriptor, std::array<char, size>& chunk, const std::string& what)
{
    ssize_t count = 0;
    do
        count = read(descriptor, chunk.data(), chunk.size());
    while (count < 0 && (errno == EINTR || errno == EAGAIN));
    if (count < 0)
        fail(ExitStatus::Input, what + " cannot be read");
    return static_cast<std::size_t>(count);
}

void writeSome(int descriptor, const char* data, std::size_t size, const std::string& what)
{
    while (size > 0) {
        const ssize_t count = write(descriptor, data, size);
        if (count < 0 && errno != EINTR && errno != EAGAIN && descriptor == STDOUT_FILENO)
            failToPrint(std::string(": ") + std::strerror(errno));
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            fail(ExitStatus::JobFailed, what + " cannot be written");
        const std::size_t written = count < 0 ? 0 : static_cast<std::size_t>(count);
        data += written;
        size -= written;
    }
}

void writeWhenReady(const char* data, std::size_t size, const InterruptWatch& watch)
{
    static const bool isTerminal = isatty(STDOUT_FILENO) != 0;
    static TerminalFilter filter;
    std::string cleaned;
    if (isTerminal) {
        cleaned = filter.clean({data, size});
        data = cleaned.data();
        size = cleaned.size();
    }
    waitFor(STDOUT_FILENO, POLLOUT, watch);
    writeSome(STDOUT_FILENO, data, size, "standard output");
}

} // namespace

void ignoreLostReaders()
{
    std::signal(SIGPIPE, SIG_IGN);
}

void occupyStandardStreams()
{
    // With the opposite mode, so that a use of the stream fails as it would without the stream.
    constexpr std::array<int, 3> modes{O_WRONLY, O_RDONLY, O_RDONLY};
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", modes.at(static_cast<std::size_t>(stream)));
}

void fetchStream(const std::string& source, const std::string& path, const InterruptWatch& watch)
{
    const bool isStandard = source == kStandardStream;
    const std::string what = isStandard ? "standard input" : source + ": the file";
    // Opening a pipe without a writer would block and ignore a stop.
    const base::FileDescriptor input(
        isStandard ? dup(STDIN_FILENO) : open(source.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!input)
        fail(ExitStatus::Input, what + " cannot be read");
    const base::FileDescriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (!file)
        fail(ExitStatus::JobFailed, path + ": a temporary file cannot be written");
    std::array<char, 65536> chunk{};
    for (;;) {
        waitFor(input.get(), POLLIN, watch);
        const std::size_t size = readSome(input.get(), chunk, what);
        if (size == 0)
            return;
        writeSome(file.get(), chunk.data(), size, kTemporaryFile);
    }
}

void deliverToStandardOutput(const std::string& path, const InterruptWatch& watch)
{
    const base::FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        fail(ExitStatus::JobFailed, path + ": the job's result cannot be read");
    std::array<char, kPipeSpace> chunk{};
    const auto read = [&] { return readSome(file.get(), chunk, path); };
    for (std::size_t size = read(); size > 0; size = read())
        writeWhenReady(chunk.data(), size, watch);
}

void printToStandardOutput(const std::string& text, const InterruptWatch& watch)
{
    flushStandardOutput();
    for (std::size_t begin = 0; begin < text.size(); begin += kPipeSpace)
        writeWhenReady(text.data() + begin, std::min(kPipeSpace, text.size() - begin), watch);
}

void flushStandardOutput()
{
    std::cout.flush();
    if (std::cout)
        return;
    InterruptWatch::checkCommand();
    failToPrint("");
}

void printToStandardError(const std::string& text)
{
    static std::atomic<bool> isDropped = false;
    std::string_view rest = text;
    while (!rest.empty() && !isDropped) {
        if (!waitForReaderOfMessages()) {
            isDropped = true;
            return;
        }
        const ssize_t count = write(STDERR_FILENO, rest.data(), std::min(kPipeSpace, rest.size()));
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return;
        rest.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

StoppableOutput::StoppableOutput() : _original(std::cout.rdbuf(this))
{
    setp(_chunk.data(), _chunk.data() + _chunk.size());
}

StoppableOutput::~StoppableOutput()
{
    pass();
    std::cout.rdbuf(_original);
}

StoppableOutput::int_type StoppableOutput::overflow(int_type character)
{
    if (!pass())
        return traits_type::eof();
    if (character != traits_type::eof())
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

int StoppableOutput::sync()
{
    return pass() ? 0 : -1;
}

/// Writes the collected bytes. After a failure they are lost, and the stream is bad.
bool StoppableOutput::pass()
{
    std::string_view rest(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(_chunk.data(), _chunk.data() + _chunk.size());
    while (!rest.empty()) {
        while (!isReady(STDOUT_FILENO))
            if (InterruptWatch::isStopped())
                return false;
        const ssize_t count = write(STDOUT_FILENO, rest.data(), rest.size());
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return false;
        rest.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}
