#pragma once

#include <jni.h>

#include <functional>
#include <memory>

#include "EngineExport.h"

namespace EmbeddedHV {

class EHVAppSetting;
class ExecutionService;
class MetadataService;

/// What stands behind a service manager. "local" is the embedded engine; another engine is added by
/// implementing this class. Jobs are text and tables are files, so nothing above this seam changes.
class ENGINE_API Backend
{
public:
    virtual ~Backend() = default;
    /// Both stay the backend's and live as long as it does.
    virtual ExecutionService* getExecutionService() = 0;
    virtual MetadataService* getMetaDataService() = 0;
};

using BackendFactory = std::function<std::unique_ptr<Backend>(JNIEnv*, const EHVAppSetting&)>;

/// Chooses the backend of every service manager made from now on; an empty factory restores the
/// embedded one. Not synchronised: no other thread makes a service manager meanwhile. A factory may
/// call it; the choice counts from the next service manager on.
///
/// A factory that returns null makes the service manager throw Exception. What a factory throws
/// passes. A service manager that is made within a factory, on its thread, is on the embedded
/// engine.
ENGINE_API void setBackendFactory(BackendFactory factory);

/// The embedded engine, for a backend that hands a part of the work to it.
///
///     setBackendFactory([](JNIEnv* env, const EHVAppSetting& settings) {
///         return std::make_unique<CountingBackend>(makeEmbeddedBackend(env, settings));
///     });
///
/// Throws Exception if the engine cannot start. Each call makes an engine of its own.
ENGINE_API std::unique_ptr<Backend> makeEmbeddedBackend(JNIEnv* env, const EHVAppSetting& settings);

} // namespace EmbeddedHV
