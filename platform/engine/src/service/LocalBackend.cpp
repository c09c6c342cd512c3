#include "LocalBackend.h"

#include "EHVAppSetting.h"
#include "EngineException.h"
#include "runtime/DataSources.h"
#include "runtime/Database.h"
#include "runtime/FileSpace.h"
#include "service/LocalExecution.h"
#include "service/LocalMetadataService.h"

namespace EmbeddedHV {
namespace {

std::string scratchFolderOf(const EHVAppSetting& settings)
{
    const std::string* folder = settings.property("af.temp.path");
    return folder ? *folder : std::string();
}

/// The database, the file space and the named data sources, and the services that work on them.
class LocalBackend : public Backend, public ExecutionService
{
public:
    explicit LocalBackend(const EHVAppSetting& settings)
        : _files(settings.analyticRoot(), scratchFolderOf(settings)), _database(adoptDatabase()),
          _metadata(*_database, _files, _dataSources)
    {
        _database->configure(settings);
    }

    ExecutionService* getExecutionService() override { return this; }
    MetadataService* getMetaDataService() override { return &_metadata; }
    Execution* createExecution(const std::string&) override
    {
        // The contract hands the object over by pointer.
        return std::make_unique<LocalExecution>(*_database, _files, _dataSources).release();
    }

private:
    FileSpace _files;
    std::unique_ptr<Database> _database;
    DataSources _dataSources;
    LocalMetadataService _metadata;
};

} // namespace

std::unique_ptr<Backend> makeLocalBackend(JNIEnv*, const EHVAppSetting& settings)
{
    try {
        return std::make_unique<LocalBackend>(settings);
    } catch (const duck::QueryError& error) {
        throw Exception(std::string("the engine's database does not start: ") + error.what());
    }
}

} // namespace EmbeddedHV
