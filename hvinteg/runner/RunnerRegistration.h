#pragma once

#include <cstdint>

/// Counts one living runner. The first of the process starts the host's metadata library; the first
/// of a time without any makes a new Java object manager, and the last one releases it. There is no
/// lock: runners are made and destroyed on one thread at a time.
class RunnerRegistration
{
public:
    RunnerRegistration();
    ~RunnerRegistration();
    RunnerRegistration(const RunnerRegistration&) = delete;
    RunnerRegistration& operator=(const RunnerRegistration&) = delete;

private:
    static std::uint64_t runnerCount;
    static bool cfInitialized;
};
