#pragma once

#include <chrono>
#include <ctime>

/// The processor time of all threads of this process. Other programs do not change it, so a test
/// may compare it with a limit.
struct ProcessorClock
{
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ProcessorClock>;
    static constexpr bool is_steady = true;

    static time_point now()
    {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return time_point(std::chrono::seconds(time.tv_sec) +
                          std::chrono::nanoseconds(time.tv_nsec));
    }
};

/// The longest wait after a stop that was heeded, also on a busy machine. Whoever is waited for in
/// these tests waits a minute.
constexpr std::chrono::seconds kLongestStop(20);
