#include "service/LocalBackend.h"

#include "EHVAppSetting.h"
#include "service/ContractFaults.h"
#include "service/EngineResources.h"
#include "service/LocalExecution.h"
#include "service/LocalMetadataService.h"

namespace EmbeddedHV {
namespace {

std::string scratchFolderOf(const EHVAppSetting& settings)
{
    const std::string* folder = settings.property("af.temp.path");
    return folder ? *folder : std::string();
}

/// The services of the embedded engine.
class LocalBackend : public Backend, public ExecutionService
{
public:
    explicit LocalBackend(const EHVAppSetting& settings)
        : _resources(std::make_shared<EngineResources>(settings)),
          _metadata(*_resources->database, _resources->files, _resources->dataSources)
    {
    }

    ExecutionService* getExecutionService() override { return this; }
    MetadataService* getMetaDataService() override { return &_metadata; }
    Execution* createExecution(const std::string&) override
    {
        return contracted("the engine cannot begin a job", [this] {
            // The contract hands the object over by pointer.
            return std::make_unique<LocalExecution>(_resources).release();
        });
    }

private:
    std::shared_ptr<EngineResources> _resources;
    LocalMetadataService _metadata;
};

} // namespace

EngineResources::EngineResources(const EHVAppSetting& settings)
    : files(settings.analyticRoot(), scratchFolderOf(settings)), database(adoptDatabase())
{
    database->configure(settings);
}

std::unique_ptr<Backend> makeLocalBackend(JNIEnv*, const EHVAppSetting& settings)
{
    return contracted("the engine does not start",
                      [&] { return std::make_unique<LocalBackend>(settings); });
}

} // namespace EmbeddedHV
