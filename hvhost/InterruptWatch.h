#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "CommandFault.h"

/// Watches for Ctrl-C and the time limit of a command, on a thread of its own, and tells the host's
/// adapter, whose handler cancels the job that runs. The first interrupt asks for an orderly end, a
/// second one removes the temporary folder and leaves the process at once.
///
/// Make one before any other thread starts: SIGINT, SIGTERM and SIGHUP are blocked from then on,
/// in the threads that are made later too.
class InterruptWatch
{
public:
    /// `timeout` in seconds, from now.
    explicit InterruptWatch(std::optional<double> timeout);
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Throws CommandFault if the user interrupted the command or its time is over.
    void check() const;

    /// Work that cannot ask the watch all the time, such as the parsing of a document. While one of
    /// these objects exists, the watch ends the process if the command does not heed a stop within
    /// half a second. It tells the user, and removes the temporary folder and the unfinished file.
    /// So nothing else may be left to clean up. One thread at a time.
    class Abandonable
    {
    public:
        /// Borrows the watch. An empty path means that there is no unfinished file.
        explicit Abandonable(const InterruptWatch& watch, const std::string& unfinishedFile = {});
        ~Abandonable() { end(); }
        Abandonable(const Abandonable&) = delete;
        Abandonable& operator=(const Abandonable&) = delete;
        /// The work is done. From here on the command heeds a stop itself.
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
    std::optional<CommandFault> stop() const;
    [[noreturn]] void leave(ExitStatus status) const;

    std::atomic<bool> _ended = false;
    std::atomic<bool> _interrupted = false;
    std::atomic<bool> _timedOut = false;
    // For the watching thread alone.
    Clock::time_point _firstInterrupt;
    std::optional<Clock::time_point> _stopped;
    bool _hasFailed = false; ///< whether the user was told that a job cannot be cancelled
    /// Guards the next two. The watching thread does not let go of it when it ends the process.
    mutable std::mutex _abandoning;
    mutable int _abandonable = 0;
    mutable std::string _unfinishedFile;
    std::thread _thread;
};
