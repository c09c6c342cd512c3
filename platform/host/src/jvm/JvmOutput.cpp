#include "JvmOutput.h"

#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "JvmOptions.h"
#include "JvmStart.h"

namespace {
constinit JvmOutput* installed = nullptr;

// The amount of recent output that is kept to explain the end of the process.
constexpr std::size_t kMostRecent = 4096;

/// Exceptions must not reach the machine's code. Text is lost if memory is exhausted. The
/// machine also prints into files with this, for example into one that -Xlog names.
jint JNICALL printHook(FILE* stream, const char* format, va_list arguments) noexcept
{
    if (stream != nullptr && fileno(stream) > STDERR_FILENO)
        return std::vfprintf(stream, format, arguments);
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    try {
        std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
        if (length > 0)
            std::vsnprintf(text.data(), text.size() + 1, format, arguments);
        installed->take(text);
    } catch (...) {
        return length;
    }
    return length;
}

/// The machine ends the process after this returns, because Java code requested it.
void JNICALL exitHook(jint status) noexcept
{
    char text[100];
    std::snprintf(text, sizeof text,
                  "The Java virtual machine was told to end the process with status %d",
                  static_cast<int>(status));
    installed->endProcess(text);
}

/// The machine or an agent has called exit on the thread that creates the machine. Its exit hook is
/// not called then.
void endedWhileStarting() noexcept
{
    if (!JvmStart::isUnderWay())
        return;
    std::string reason = "The Java virtual machine has ended the process while it started";
    if (const std::string options = optionVariables(); !options.empty())
        reason += "; it was started with " + options;
    installed->endProcess(reason);
}

/// The machine has failed and ends the process after this returns.
void JNICALL abortHook() noexcept
{
    JvmStart::giveUp();
    installed->takeLast("The Java virtual machine cannot go on, and ends the process.\n");
}
} // namespace

void JvmOutput::install()
{
    installed = this;
}

void JvmOutput::watchExit()
{
    // Without this, only the message is lost.
    static_cast<void>(std::atexit(endedWhileStarting));
}

void JvmOutput::endProcess(const std::string& reason) noexcept
{
    if (_endHandler)
        _endHandler(reason);
    else
        takeLast((reason + ".\n").c_str());
    std::abort();
}

void JvmOutput::beginStart()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _startText.clear();
    _starting = true;
}

std::string JvmOutput::endStart()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _starting = false;
    return std::move(_startText);
}

void JvmOutput::take(const std::string& text)
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (_starting)
            _startText += text;
        _recent += text;
        if (_recent.size() > kMostRecent)
            _recent.erase(0, _recent.size() - kMostRecent);
    }
    if (_receiver)
        _receiver(text);
}

void JvmOutput::takeLast(const char* text) noexcept
{
    bool isTaken = false;
    try {
        take(text);
        isTaken = true;
    } catch (...) { // no memory, or the receiver has thrown
    }
    if (_receiver && isTaken)
        return;
    const std::lock_guard<std::mutex> lock(_mutex);
    std::fputs(_recent.c_str(), stderr);
    if (!_recent.ends_with(text))
        std::fputs(text, stderr);
    std::fflush(stderr);
}

std::vector<JavaVMOption> JvmOutput::hooks()
{
    // The machine does not change the option texts; its interface has no const.
    static char print[] = "vfprintf";
    static char exit[] = "exit";
    static char abort[] = "abort";
    return {{print, reinterpret_cast<void*>(&printHook)},
            {exit, reinterpret_cast<void*>(&exitHook)},
            {abort, reinterpret_cast<void*>(&abortHook)}};
}
