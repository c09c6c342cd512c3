#pragma once

#include "support/HvintegExport.h"

namespace EmbeddedHV {
class HVServiceManager;
}

/// Owns the engine of the process: starts it at first use and keeps it until the process ends or
/// the host shuts it down. All runners share it.
///
/// There is no lock: calls must not overlap.
class HVINTEG_EXPORT StatHVServiceManager
{
public:
    StatHVServiceManager() = delete;

    /// Returns the service. The first call reads the engine's settings from the host and starts the
    /// engine in the Java environment of the calling thread. With `log` it writes the settings to
    /// the diagnostic log. Passes on what the start throws; the next call tries again.
    static EmbeddedHV::HVServiceManager* get(bool log);

    /// Ends the service, if there is one. The next get starts a new one with fresh settings. Only
    /// the host calls this. The Java virtual machine keeps running. The executions of the embedded
    /// engine outlive the service: a runner may still use and end one. With another engine, end the
    /// executions first.
    static void shutdown();

private:
    static EmbeddedHV::HVServiceManager* _service;
};
