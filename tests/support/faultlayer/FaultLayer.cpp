#include "FaultLayer.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Callers.h"
#include "Decision.h"

namespace faultlayer {
namespace {

constexpr const char* kNames[] = {"none", "new",    "malloc", "open",  "write",
                                  "sync", "rename", "read",   "thread"};

std::atomic<Kind> armedKind = Kind::None;
std::atomic<bool> countsDatabase = false;
std::atomic<long> failing = 0;
std::atomic<long> counted = 0;
std::atomic<const void*> failedSite = nullptr;
std::atomic<bool> wasDelivered = false;

// The search for the caller may itself allocate. Initial-exec, because other access to thread-local
// memory may allocate too.
[[gnu::tls_model("initial-exec")]] thread_local bool isDeciding = false;

/// Reads the fault from the environment. Writes a report when the process ends.
class EnvironmentFault
{
public:
    EnvironmentFault()
    {
        const char* const text = std::getenv("HV_FAULT");
        char name[16] = {};
        char scope[16] = {};
        long number = 0;
        if (text && std::sscanf(text, "%15[^:]:%ld:%15s", name, &number, scope) >= 2)
            arm(kindNamed(name),
                std::strcmp(scope, "database") == 0 ? Scope::OursAndDatabase : Scope::Ours, number);
    }
    ~EnvironmentFault()
    {
        const char* const path = std::getenv("HV_FAULT_REPORT");
        if (!path)
            return;
        const Outcome outcome = disarm();
        if (std::FILE* const file = std::fopen(path, "w")) {
            std::fprintf(file, "%ld %d %p\n", outcome.calls, outcome.delivered ? 1 : 0,
                         outcome.site);
            std::fclose(file);
        }
    }
    EnvironmentFault(const EnvironmentFault&) = delete;
    EnvironmentFault& operator=(const EnvironmentFault&) = delete;
};
const EnvironmentFault environmentFault;

} // namespace

const char* nameOf(Kind kind)
{
    return kNames[static_cast<int>(kind)];
}

Kind kindNamed(const char* name)
{
    for (std::size_t i = 0; i < std::size(kNames); ++i)
        if (std::strcmp(name, kNames[i]) == 0)
            return static_cast<Kind>(i);
    return Kind::None;
}

void arm(Kind kind, Scope scope, long number)
{
    learnOwners();
    countsDatabase = scope == Scope::OursAndDatabase;
    failing = number;
    counted = 0;
    failedSite = nullptr;
    wasDelivered = false;
    armedKind = kind;
}

Outcome disarm()
{
    armedKind = Kind::None;
    return {counted, wasDelivered, failedSite};
}

bool isToFail(Kind kind, const void* returnAddress)
{
    if (armedKind.load(std::memory_order_relaxed) != kind || isDeciding)
        return false;
    isDeciding = true;
    const Caller caller = callerOf(returnAddress);
    isDeciding = false;
    if (caller.owner != Owner::Ours && !(caller.owner == Owner::Database && countsDatabase))
        return false;
    if (++counted != failing)
        return false;
    failedSite = caller.address;
    wasDelivered = true;
    return true;
}

} // namespace faultlayer
