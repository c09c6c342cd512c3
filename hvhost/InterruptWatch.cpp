#include "InterruptWatch.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <csignal>

#include "Attention.h"
#include "CFAppHost.h"
#include "CommandFault.h"

namespace {

// How often the watch looks up. A stop is told again each time, since a job may begin right after
// it.
constexpr long kLookNanoseconds = 50'000'000;
// One Ctrl-C may come twice: from the terminal, and from a program in between that passes it on.
constexpr std::chrono::milliseconds kOneStroke(250);

sigset_t watchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    return signals;
}

} // namespace

InterruptWatch::InterruptWatch(std::optional<double> timeout)
{
    const sigset_t signals = watchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // A file that grows over its limit is a fault to report, as a full disk is.
    std::signal(SIGXFSZ, SIG_IGN);
    _thread = std::thread([this, timeout] { watch(timeout); });
}

InterruptWatch::~InterruptWatch()
{
    _ended = true;
    // Wakes the watch, which would look up only later; the command should not wait for that.
    pthread_kill(_thread.native_handle(), SIGHUP);
    _thread.join();
}

void InterruptWatch::interrupted(Clock::time_point now)
{
    if (!_interrupted.exchange(true)) {
        _firstInterrupt = now;
    } else if (now - _firstInterrupt > kOneStroke) {
        CFAppHost::removeTempDirectory();
        _exit(static_cast<int>(ExitStatus::Interrupted));
    }
}

void InterruptWatch::watch(std::optional<double> timeout)
{
    const sigset_t signals = watchedSignals();
    const auto start = Clock::now();
    const timespec look{0, kLookNanoseconds};
    while (!_ended) {
        const bool signalled = sigtimedwait(&signals, nullptr, &look) > 0;
        if (_ended)
            return;
        const auto now = Clock::now();
        if (signalled)
            interrupted(now);
        if (timeout && std::chrono::duration<double>(now - start).count() >= *timeout)
            _timedOut = true;
        if (_interrupted || _timedOut)
            GetAdapter()->interrupt();
    }
}

void InterruptWatch::check() const
{
    if (_interrupted)
        throw CommandFault(ExitStatus::Interrupted, "interrupted");
    if (_timedOut)
        throw CommandFault(ExitStatus::Timeout, "the time limit is over",
                           "a longer one is set with --timeout SECONDS");
}
