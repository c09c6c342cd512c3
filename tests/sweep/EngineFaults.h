#pragma once

#include <atomic>

#include "support/ScriptedEngine.h"

/// Counts the calls that the library makes to the engine, and has one of them throw.
class EngineFaults
{
public:
    void arm(long number, Fault fault);
    /// How many calls there were since; whether one of them threw.
    long disarm(bool& delivered);
    /// For the engine, at the start of each call.
    void onCall();

private:
    std::atomic<long> _calls = 0;
    std::atomic<long> _failing = 0;
    std::atomic<bool> _delivered = false;
    std::atomic<Fault> _fault = Fault::None;
};

/// While it lives, every service manager made uses the embedded engine, whose calls go through
/// `faults`. One at a time.
class FaultyEngine
{
public:
    explicit FaultyEngine(EngineFaults& faults);
    ~FaultyEngine();
    FaultyEngine(const FaultyEngine&) = delete;
    FaultyEngine& operator=(const FaultyEngine&) = delete;
};
