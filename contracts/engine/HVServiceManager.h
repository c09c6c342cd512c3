#pragma once

#include <jni.h>

#include <memory>

#include "EngineExport.h"

namespace EmbeddedHV {

class Backend;
class EHVAppSetting;
class ExecutionService;
class MetadataService;

/// The entry point of the engine. A process makes one. It runs on a backend, which it makes when it
/// is constructed: the embedded engine, unless setBackendFactory has set another one.
class ENGINE_API HVServiceManager
{
public:
    /// Starts the engine. `env` is the environment of the calling thread. Throws Exception if the
    /// engine cannot start; the message gives the reason.
    HVServiceManager(JNIEnv* env, const EHVAppSetting& settings);
    HVServiceManager(const HVServiceManager&) = delete;
    HVServiceManager& operator=(const HVServiceManager&) = delete;
    /// Shuts the engine down. Executions of the embedded engine can still be used and ended
    /// afterwards; those of another backend must be ended before.
    virtual ~HVServiceManager();

    /// The service that makes executions. The manager owns it; it lives as long as the manager.
    virtual ExecutionService* getExecutionService();
    /// The service that answers questions without a job. The manager owns it; it lives as long as
    /// the manager.
    virtual MetadataService* getMetaDataService();

private:
    std::unique_ptr<Backend> _backend;
};

} // namespace EmbeddedHV
