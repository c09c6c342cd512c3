#pragma once

#include <jni.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

class EHVAppSetting;
class ExecutionService;
class MetadataService;

/// The engine that a service manager runs on. The default is the embedded engine. To use another
/// engine, implement this class and pass a factory to setBackendFactory or registerBackend. Jobs
/// are text and tables are files, so callers of the service manager do not change.
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

/// The property of EHVAppSetting that names the backend: "embedded", which is the default, "spark"
/// or a name of registerBackend.
inline constexpr const char* kBackendSetting = "engine.backend";
/// Properties for the backend "spark". The address of the cluster's Spark Connect server, for
/// example sc://host:15002.
inline constexpr const char* kUrlSetting = "engine.url";
/// A folder that all workers of the cluster see, as a path or URI of the cluster. Jobs keep
/// intermediate records there and remove them at their end. Without it, they use the cluster's
/// warehouse folder.
inline constexpr const char* kScratchSetting = "engine.scratch";
/// The most bytes of records that one source sends from this process to the cluster, as a number.
/// The default is 1 GiB. A job that would send more fails.
inline constexpr const char* kUploadSetting = "engine.upload.bytes";
/// The most bytes of records that one component collects from the cluster into this process's
/// scratch folder, as a number. The default is 4 GiB. A job that would collect more fails.
inline constexpr const char* kCollectSetting = "engine.collect.bytes";
/// How the cluster adds Reals for sums and means. "exact", the default: to the same result in every
/// order of the records. "double": with the cluster's own functions, which are faster and round
/// each addition.
inline constexpr const char* kSumsSetting = "engine.sums";
/// Begins the properties that are passed to the cluster as settings of a job's session. The rest of
/// the key is the cluster's name of the setting.
inline constexpr const char* kOptionPrefix = "engine.option.";

/// Adds a backend to those that kBackendSetting can name, or replaces one. Any thread. It has an
/// effect on later service managers.
ENGINE_API void registerBackend(const std::string& name, BackendFactory factory);
/// The names of the backends, in alphabetical order. Any thread.
ENGINE_API std::vector<std::string> backendNames();
/// Makes the backend that the settings name. The caller owns it. Throws Exception if there is no
/// backend of this name, and what the backend's factory throws. Any thread.
ENGINE_API std::unique_ptr<Backend> makeNamedBackend(JNIEnv* env, const EHVAppSetting& settings);

/// Sets the factory that makes the backend of every later service manager. An empty factory
/// restores the backend that the settings name. Not synchronised: no other thread may make a
/// service manager during the call. A factory may call it; the next service manager then uses the
/// new factory.
///
/// If a factory returns null, the constructor of the service manager throws Exception. If a factory
/// throws, the exception passes through the constructor. A service manager that a factory makes, on
/// its own thread, runs on the backend that the settings name.
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
