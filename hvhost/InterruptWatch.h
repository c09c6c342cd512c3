#pragma once

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

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

private:
    using Clock = std::chrono::steady_clock;

    void watch(std::optional<double> timeout);
    void interrupted(Clock::time_point now);

    std::atomic<bool> _ended = false;
    std::atomic<bool> _interrupted = false;
    std::atomic<bool> _timedOut = false;
    Clock::time_point _firstInterrupt; ///< for the watching thread alone
    std::thread _thread;
};
