#pragma once

#include <cstdint>

/// Registers a runner. The first one of the process starts the host's metadata library. The first
/// one while there is no other creates the Java object manager, and the last one releases it. There
/// is no lock: runners are created and destroyed on one thread at a time.
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
