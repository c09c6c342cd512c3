#pragma once

#include <jni.h>

#include <functional>
#include <memory>

#include "EngineExport.h"

namespace EmbeddedHV {

class EHVAppSetting;
class ExecutionService;
class MetadataService;

/// The engine that a service manager runs on. The default is the embedded engine. To use another
/// engine, implement this class and pass a factory to setBackendFactory. Jobs are text and tables
/// are files, so callers of the service manager do not change.
class ENGINE_API Backend
{
public:
    /// Stops the engine.
    virtual ~Backend() = default;
    /// The service that makes executions. The backend owns it; it lives as long as the backend. Not
    /// null.
    virtual ExecutionService* getExecutionService() = 0;
    /// The service that answers questions without a job. The backend owns it; it lives as long as
    /// the backend. Not null.
    virtual MetadataService* getMetaDataService() = 0;
};

/// Makes a backend. The service manager owns the result. The settings are valid only during the
/// call.
using BackendFactory = std::function<std::unique_ptr<Backend>(JNIEnv*, const EHVAppSetting&)>;

/// Sets the factory that makes the backend of every later service manager. An empty factory
/// restores the embedded engine. Not synchronised: no other thread may make a service manager
/// during the call. A factory may call it; the next service manager then uses the new factory.
///
/// If a factory returns null, the constructor of the service manager throws Exception. If a factory
/// throws, the exception passes through the constructor. A service manager that a factory makes, on
/// its own thread, runs on the embedded engine.
ENGINE_API void setBackendFactory(BackendFactory factory);

/// Makes an embedded engine. A backend can use it for a part of its work:
///
///     setBackendFactory([](JNIEnv* env, const EHVAppSetting& settings) {
///         return std::make_unique<CountingBackend>(makeEmbeddedBackend(env, settings));
///     });
///
/// Each call makes a separate engine, which the caller owns. Throws Exception if the engine cannot
/// start. Any thread.
ENGINE_API std::unique_ptr<Backend> makeEmbeddedBackend(JNIEnv* env, const EHVAppSetting& settings);

} // namespace EmbeddedHV
