#pragma once

#include <jni.h>

#include <memory>

#include "EngineExport.h"

namespace EmbeddedHV {

class Backend;
class EHVAppSetting;
class ExecutionService;
class MetadataService;

/// The engine's entry point, one for each process. Behind it stands a backend, chosen when the
/// manager is made: the embedded one, unless EngineBackend.h was told otherwise.
class ENGINE_API HVServiceManager
{
public:
    /// Starts the engine. Throws Exception if it cannot start, naming what is missing.
    HVServiceManager(JNIEnv* env, const EHVAppSetting& settings);
    HVServiceManager(const HVServiceManager&) = delete;
    HVServiceManager& operator=(const HVServiceManager&) = delete;
    virtual ~HVServiceManager();

    /// The two services stay the manager's.
    virtual ExecutionService* getExecutionService();
    virtual MetadataService* getMetaDataService();

private:
    std::unique_ptr<Backend> _backend;
};

} // namespace EmbeddedHV
