#include "HVServiceManager.h"

#include <utility>

#include "EngineBackend.h"
#include "EngineException.h"
#include "base/ScopeExit.h"

namespace EmbeddedHV {
namespace {

BackendFactory& chosenFactory()
{
    static BackendFactory factory;
    return factory;
}

/// Whether a factory runs on this thread.
thread_local bool isFactoryRunning = false;

std::unique_ptr<Backend> makeBackend(JNIEnv* env, const EHVAppSetting& settings)
{
    // A copy, because the factory may set another factory while it runs.
    const BackendFactory factory = chosenFactory();
    if (!factory || isFactoryRunning)
        return makeNamedBackend(env, settings);
    isFactoryRunning = true;
    const base::ScopeExit restore([] { isFactoryRunning = false; });
    std::unique_ptr<Backend> backend = factory(env, settings);
    if (!backend)
        throw Exception("the engine does not start: the backend factory returned no backend");
    return backend;
}

} // namespace

void setBackendFactory(BackendFactory factory)
{
    chosenFactory() = std::move(factory);
}

HVServiceManager::HVServiceManager(JNIEnv* env, const EHVAppSetting& settings)
    : _backend(makeBackend(env, settings))
{
}

HVServiceManager::~HVServiceManager() = default;

ExecutionService* HVServiceManager::getExecutionService()
{
    return _backend->getExecutionService();
}

MetadataService* HVServiceManager::getMetaDataService()
{
    return _backend->getMetaDataService();
}

} // namespace EmbeddedHV
