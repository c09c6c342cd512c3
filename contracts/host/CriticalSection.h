#pragma once

#include <mutex>

#include "HostExport.h"

/// A recursive lock.
class HOST_API CriticalSection
{
public:
    /// Waits for the lock and takes it.
    void Enter() { _mutex.lock(); }
    /// Releases the lock. Only the thread that holds it may call this.
    void Leave() { _mutex.unlock(); }
    /// See Enter. This name and unlock are for std::lock_guard.
    void lock() { Enter(); }
    /// See Leave.
    void unlock() { Leave(); }

private:
    std::recursive_mutex _mutex;
};
