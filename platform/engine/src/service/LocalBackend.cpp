#include "service/LocalBackend.h"

#include "EHVAppSetting.h"
#include "duckdb/DuckEngine.h"
#include "service/ContractFaults.h"
#include "service/EngineResources.h"
#include "service/LocalExecution.h"
#include "service/LocalMetadataService.h"
#include "spark/SparkEngine.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kNoStart = "the engine does not start";

std::string scratchFolderOf(const EHVAppSetting& settings)
{
    const std::string* folder = settings.property("af.temp.path");
    return folder ? *folder : std::string();
}

/// The services of the embedded engine.
class LocalBackend : public Backend, public ExecutionService
{
public:
    explicit LocalBackend(std::shared_ptr<EngineResources> resources)
        : _resources(std::move(resources)),
          _metadata(*_resources->engine, _resources->files, _resources->dataSources)
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
    return contracted(kNoStart, [&] {
        auto resources = std::make_shared<EngineResources>(settings);
        resources->engine = std::make_unique<DuckEngine>(*resources->database);
        return std::make_unique<LocalBackend>(std::move(resources));
    });
}

std::unique_ptr<Backend> makeSparkBackend(JNIEnv* env, const EHVAppSetting& settings)
{
    return contracted(kNoStart, [&] {
        // First: it is cheap, and a wrong setting must not start the database.
        const SparkSettings spark = sparkSettings(env, settings);
        auto resources = std::make_shared<EngineResources>(settings);
        resources->engine = std::make_unique<SparkEngine>(spark, *resources->database);
        return std::make_unique<LocalBackend>(std::move(resources));
    });
}

} // namespace EmbeddedHV
