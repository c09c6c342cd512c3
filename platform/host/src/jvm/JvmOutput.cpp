#include "JvmOutput.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {
constinit JvmOutput* installed = nullptr;

jint JNICALL printHook(FILE*, const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    installed->take(text);
    return length;
}

/// The machine is about to end the process, because Java code asked for it. It goes on to do so
/// when this returns, and an exit status of 0 would pass for a success of the host. Aborting
/// instead makes it the fault that it is, visible to whatever watches the host.
void JNICALL exitHook(jint status)
{
    installed->take("The Java virtual machine was told to end the process with status " +
                    std::to_string(status) + ".\n");
    std::abort();
}
} // namespace

void JvmOutput::install()
{
    installed = this;
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
    }
    if (_receiver)
        _receiver(text);
}

std::vector<JavaVMOption> JvmOutput::hooks()
{
    // The option texts are not changed by the machine; its interface predates const.
    static char print[] = "vfprintf";
    static char exit[] = "exit";
    return {{print, reinterpret_cast<void*>(&printHook)},
            {exit, reinterpret_cast<void*>(&exitHook)}};
}
