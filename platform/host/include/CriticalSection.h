#pragma once

#include <mutex>

#include "HostExport.h"

/// A lock that its holder may take again.
class HOST_API CriticalSection
{
public:
    void Enter() { _mutex.lock(); }
    void Leave() { _mutex.unlock(); }
    /// So that std::lock_guard works.
    void lock() { Enter(); }
    void unlock() { Leave(); }

private:
    std::recursive_mutex _mutex;
};
