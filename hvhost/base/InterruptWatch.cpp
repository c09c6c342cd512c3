#include "hvhost/base/InterruptWatch.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <utility>

#include "Attention.h"
#include "CFAppHost.h"
#include "EngineException.h"
#include "datafile/StartedThread.h"
#include "hvhost/base/Text.h"
#include "hvhost/base/UserMessages.h"

namespace {

// The interval between two checks. A stop is sent again at each check, because a job may begin
// right after it.
constexpr long kLookNanoseconds = 50'000'000;
// One Ctrl-C may arrive twice: from the terminal, and from a program that forwards it.
constexpr std::chrono::milliseconds kOneStroke(250);
// How long abandonable work may ignore a stop.
constexpr std::chrono::milliseconds kUnheeded(500);

// The stop of the command. It outlives the watch, because the command reports its fault afterwards.
std::atomic<bool> interruptedByUser = false;
std::atomic<bool> timeIsUp = false;

std::optional<CommandFault> stopFault()
{
    if (interruptedByUser)
        return CommandFault(ExitStatus::Interrupted, "interrupted");
    if (timeIsUp)
        return CommandFault(ExitStatus::Timeout, "timed out",
                            "--timeout SECONDS sets a longer limit");
    return std::nullopt;
}

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
    interruptedByUser = false;
    timeIsUp = false;
    const sigset_t signals = watchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // A file that exceeds its size limit is an error to report, like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    _thread = datafile::startedThread("watches for interrupts and the time limit",
                                      [this, timeout] { watch(timeout); });
}

InterruptWatch::~InterruptWatch()
{
    _ended = true;
    // Wakes the watch, so that the command does not wait for its next check.
    pthread_kill(_thread.native_handle(), SIGHUP);
    _thread.join();
}

void InterruptWatch::interrupted(Clock::time_point now)
{
    if (!interruptedByUser.exchange(true)) {
        _firstInterrupt = now;
    } else if (now - _firstInterrupt > kOneStroke) {
        const std::lock_guard lock(_abandoning);
        leave(ExitStatus::Interrupted);
    }
}

void InterruptWatch::leave(ExitStatus status) const
{
    if (!_unfinishedFile.empty())
        unlink(_unfinishedFile.c_str());
    CFAppHost::removeTempDirectory();
    _exit(static_cast<int>(status));
}

void InterruptWatch::abandonIfDeaf(Clock::time_point now)
{
    if (!_stopped)
        _stopped = now;
    if (now - *_stopped < kUnheeded)
        return;
    const std::lock_guard lock(_abandoning);
    if (_abandonable == 0)
        return;
    const std::optional<CommandFault> fault = stopFault();
    printMessage(std::string("hvhost: error: ") + fault->what());
    if (!fault->hint().empty())
        printMessage("  hint: " + fault->hint());
    leave(fault->status());
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
            timeIsUp = true;
        if (isStopped()) {
            tellAdapter();
            abandonIfDeaf(now);
        }
    }
}

/// An exception that left the thread would end the process. The stop is sent again at the next
/// check, so a failed cancellation is repeated.
void InterruptWatch::tellAdapter()
{
    std::string reason;
    try {
        GetAdapter()->interrupt();
        return;
    } catch (const EmbeddedHV::Exception& error) {
        reason = error.getMessage();
    } catch (const EmbeddedHV::JavaException& error) {
        reason = error.getMessage();
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "unknown exception";
    }
    if (!std::exchange(_hasFailed, true))
        printMessage("hvhost: warning: the job cannot be cancelled: " + printable(reason));
}

bool InterruptWatch::isStopped()
{
    return interruptedByUser || timeIsUp;
}

void InterruptWatch::checkCommand()
{
    if (const std::optional<CommandFault> fault = stopFault())
        throw *fault;
}

void InterruptWatch::check() const
{
    checkCommand();
}

InterruptWatch::Abandonable::Abandonable(const InterruptWatch& watch,
                                         const std::string& unfinishedFile)
    : _watch(watch)
{
    const std::lock_guard lock(_watch._abandoning);
    ++_watch._abandonable;
    if (!unfinishedFile.empty())
        _watch._unfinishedFile = unfinishedFile;
}

void InterruptWatch::Abandonable::end()
{
    if (!_isUnderWay)
        return;
    _isUnderWay = false;
    const std::lock_guard lock(_watch._abandoning);
    // The outermost object ends last. The file belongs to the innermost one.
    --_watch._abandonable;
    _watch._unfinishedFile.clear();
}
