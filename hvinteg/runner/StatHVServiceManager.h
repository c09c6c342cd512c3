#pragma once

#include "support/HvintegExport.h"

namespace EmbeddedHV {
class HVServiceManager;
}

/// Owns the engine of the process: starts it at first use and keeps it up until the process ends or
/// the host shuts it down. All jobs and queries of all runners share it.
///
/// There is no lock: the caller does not ask on two threads at once.
class HVINTEG_EXPORT StatHVServiceManager
{
public:
    StatHVServiceManager() = delete;

    /// The service. The first call gathers the engine's settings from the host, starts the engine
    /// on the present thread's Java environment and, with `log`, writes the settings to the
    /// diagnostic log. What the start throws passes through, and the next call tries again.
    static EmbeddedHV::HVServiceManager* get(bool log);

    /// Ends the service, if there is one; the next get starts a new one with fresh settings. For
    /// the host: nothing in this library calls it. The Java virtual machine stays up. A runner that
    /// still has an execution may use and end it afterwards, if the engine's executions outlive the
    /// service, as those of the embedded engine do; with another engine, runners are cleaned first.
    static void shutdown();

private:
    static EmbeddedHV::HVServiceManager* _service;
};
