#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "hvhost/base/CommandFault.h"

/// Watches for Ctrl-C and the time limit of a command, on its own thread. It calls the host's
/// adapter, whose handler cancels the running job. The first interrupt requests an orderly end. A
/// second one removes the temporary folder and ends the process at once.
///
/// Make one before any other thread starts: SIGINT, SIGTERM and SIGHUP are blocked from then on,
/// also in later threads.
class InterruptWatch
{
public:
    /// `timeout` is in seconds from now.
    explicit InterruptWatch(std::optional<double> timeout);
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Throws CommandFault if the user interrupted the command or its time has run out.
    void check() const;
    /// The same for code without access to the watch, also after the end of the watch.
    static void checkCommand();
    /// Whether checkCommand throws. Any thread may call it.
    static bool isStopped();

    /// Work that cannot call check regularly, for example the parsing of a document. While such an
    /// object exists, the watch ends the process if the command ignores a stop for half a second.
    /// It then reports the stop and removes the temporary folder and the unfinished file. Nothing
    /// else may need cleaning up. One thread at a time.
    class Abandonable
    {
    public:
        /// Borrows the watch. An empty path means that there is no unfinished file.
        explicit Abandonable(const InterruptWatch& watch, const std::string& unfinishedFile = {});
        ~Abandonable() { end(); }
        Abandonable(const Abandonable&) = delete;
        Abandonable& operator=(const Abandonable&) = delete;
        /// The work is done. From now on the command checks for a stop itself.
        void end();

    private:
        const InterruptWatch& _watch;
        bool _isUnderWay = true;
    };

private:
    using Clock = std::chrono::steady_clock;

    void watch(std::optional<double> timeout);
    void tellAdapter();
    void interrupted(Clock::time_point now);
    void abandonIfDeaf(Clock::time_point now);
    [[noreturn]] void leave(ExitStatus status) const;

    std::atomic<bool> _ended = false;
    // Used only by the watching thread.
    Clock::time_point _firstInterrupt;
    std::optional<Clock::time_point> _stopped;
    bool _hasFailed = false; ///< whether the user was told that a job cannot be cancelled
    /// Guards the next two. The watching thread keeps the lock when it ends the process.
    mutable std::mutex _abandoning;
    mutable int _abandonable = 0;
    mutable std::string _unfinishedFile;
    std::thread _thread;
};
