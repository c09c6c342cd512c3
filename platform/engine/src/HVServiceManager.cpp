#include "HVServiceManager.h"

#include <utility>

#include "EngineBackend.h"
#include "LocalBackend.h"

namespace EmbeddedHV {
namespace {

BackendFactory& chosenFactory()
{
    static BackendFactory factory;
    return factory;
}

} // namespace

void setBackendFactory(BackendFactory factory)
{
    chosenFactory() = std::move(factory);
}

HVServiceManager::HVServiceManager(JNIEnv* env, const EHVAppSetting& settings)
    : _backend(chosenFactory() ? chosenFactory()(env, settings) : makeLocalBackend(env, settings))
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
