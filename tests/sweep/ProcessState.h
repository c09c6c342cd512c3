#pragma once

#include <cstdint>
#include <string>

class RecordingJni;

/// What a piece of work must leave as it was.
struct ProcessState
{
    int openFiles = 0;
    int threads = 0;
    int globalReferences = 0;
    int localReferences = 0;
    std::int64_t weight = 0;
    std::int64_t split = 0;
    bool hasInterruptHandler = false;

    /// Threads that are about to end are waited for, a fifth of a second at most, while there are
    /// more than `expectedThreads`. `jni` is null before the machine runs.
    static ProcessState now(const RecordingJni* jni, int expectedThreads);
    /// What is not as it was, in words; empty if all is. A process may end threads and close files
    /// that it kept.
    std::string differencesFrom(const ProcessState& before) const;
};
