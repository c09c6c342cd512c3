#include "CFAppHost.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>

#include "CFEntry.h"
#include "files/HostPath.h"
#include "settings/TempDirectory.h"
#include "text/KeptStrings.h"

namespace {

constexpr const char* kDefaultLocale = "en_US";

std::string_view environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}

// The locale of a category without codeset and modifier: "de_DE.UTF-8@euro" is "de_DE".
std::string environmentLocale(const char* category)
{
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        const std::string_view value = environment(name);
        if (value.empty())
            continue;
        const std::string_view locale = value.substr(0, value.find_first_of(".@"));
        // These locales do not express a choice of language.
        const bool neutral = locale.empty() || locale == "C" || locale == "POSIX";
        return neutral ? kDefaultLocale : std::string(locale);
    }
    return kDefaultLocale;
}

int environmentThreads()
{
    const std::string_view text = environment("VEXA_THREADS");
    int threads = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), threads);
    if (error == std::errc() && end == text.data() + text.size() && threads > 0)
        return threads;
    return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

/// Returns the present locale to the metadata library.
class HostingCallback final : public CFHostingCallback
{
public:
    const char* locale() const override { return CFAppHost::getInstance()->getLocale().c_str(); }
};

} // namespace

struct CFAppHost::Impl
{
    mutable std::mutex mutex;
    // From the environment, at the last update; an empty directory means the private one.
    std::string locale;
    std::string timeLocale;
    std::string tempDirectory;
    int threads = 1;
    // Settings of the host program, which take precedence.
    std::optional<std::string> setLocale;
    std::optional<std::string> setTimeLocale;
    std::optional<std::string> setTempDirectory;
    std::optional<int> setThreads;
    HostingCallback callback;

    void read()
    {
        const std::lock_guard lock(mutex);
        locale = environmentLocale("LC_MESSAGES");
        timeLocale = environmentLocale("LC_TIME");
        tempDirectory = hostSpelling(std::string(environment("VEXA_TEMP")));
        threads = environmentThreads();
    }
};

CFAppHost::CFAppHost() : _impl(std::make_unique<Impl>())
{
    _impl->read();
}

CFAppHost::~CFAppHost() = default;

void CFAppHost::update()
{
    getInstance()->_impl->read();
}

CFAppHost* CFAppHost::getInstance()
{
    static CFAppHost instance;
    return &instance;
}

const std::string& CFAppHost::getLocale() const
{
    const std::lock_guard lock(_impl->mutex);
    return keepString(_impl->setLocale.value_or(_impl->locale));
}

const std::string& CFAppHost::getTimeLocale() const
{
    const std::lock_guard lock(_impl->mutex);
    return keepString(_impl->setTimeLocale.value_or(_impl->timeLocale));
}

const std::string& CFAppHost::getTempDirectory() const
{
    const std::lock_guard lock(_impl->mutex);
    const std::string chosen = _impl->setTempDirectory.value_or(_impl->tempDirectory);
    return keepString(chosen.empty() ? privateTempDirectory() : chosen);
}

int CFAppHost::getMaxCompThreads() const
{
    const std::lock_guard lock(_impl->mutex);
    return _impl->setThreads.value_or(_impl->threads);
}

CFHostingCallback* CFAppHost::createCFHostingCalbck()
{
    return &_impl->callback;
}

void CFAppHost::setLocale(const std::string& locale)
{
    const std::lock_guard lock(_impl->mutex);
    if (locale.empty())
        _impl->setLocale.reset();
    else
        _impl->setLocale = locale;
}

void CFAppHost::setTimeLocale(const std::string& locale)
{
    const std::lock_guard lock(_impl->mutex);
    if (locale.empty())
        _impl->setTimeLocale.reset();
    else
        _impl->setTimeLocale = locale;
}

void CFAppHost::setTempDirectory(const std::string& directory)
{
    const std::lock_guard lock(_impl->mutex);
    if (directory.empty())
        _impl->setTempDirectory.reset();
    else
        _impl->setTempDirectory = directory;
}

void CFAppHost::setMaxCompThreads(int threads)
{
    const std::lock_guard lock(_impl->mutex);
    if (threads < 1)
        _impl->setThreads.reset();
    else
        _impl->setThreads = threads;
}

bool CFAppHost::removeTempDirectory()
{
    return removePrivateTempDirectory();
}
