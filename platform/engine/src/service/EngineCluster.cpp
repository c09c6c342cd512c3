#include "EngineCluster.h"

#include "EngineException.h"
#include "JobError.h"
#include "spark/SparkEngine.h"

namespace EmbeddedHV {

std::string clusterClient(const EHVAppSetting& settings)
{
    const std::string folder = clientFolderOf(settings);
    return SparkLibrary(nullptr, folder).isInstalled() ? folder : std::string();
}

std::string clusterVersion(JNIEnv* env, const EHVAppSetting& settings)
{
    const SparkSettings spark = sparkSettings(env, settings);
    const SparkLibrary library(spark.machine, spark.clientFolder);
    try {
        return connectedClient(library, spark, nullptr).version;
    } catch (const JobError& error) {
        throw Exception(error.text());
    } catch (const std::exception& error) {
        throw Exception(error.what());
    }
}

} // namespace EmbeddedHV
