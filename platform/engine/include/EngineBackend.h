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
/// embedded one. Not synchronised: call it while no service manager is being made.
ENGINE_API void setBackendFactory(BackendFactory factory);

} // namespace EmbeddedHV
