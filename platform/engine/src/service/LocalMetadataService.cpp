#include "service/LocalMetadataService.h"

#include "EngineException.h"
#include "JobError.h"
#include "language/Parser.h"
#include "steps/JobContext.h"
#include "steps/Planner.h"

namespace EmbeddedHV {
namespace {

[[noreturn]] void refuse(const char* what)
{
    throw Exception(std::string(what) + " are not available in this engine yet");
}

constexpr const char* kMapServices = "map services";
constexpr const char* kCoordinateSystems = "coordinate systems";

} // namespace

std::string LocalMetadataService::getMetadata(JNIEnv*, const std::string& jobText, void*&, int,
                                              const Container&)
{
    Cancellation cancellation;
    JobContext context(_database, _files, _dataSources);
    context.cancellation = &cancellation;
    context.message = [](const std::string&, const std::string&) {};
    try {
        const language::Program program = language::parseProgram(jobText);
        Planner planner(program, context);
        if (planner.statementCount() == 0)
            throw Exception("the job has no statement, so it has no data model");
        return dataModelOf(planner.planStatement(planner.statementCount() - 1).result->fields);
    } catch (const JobError& error) {
        throw Exception(error.text());
    } catch (const duck::QueryError& error) {
        throw Exception(error.what());
    }
}

std::string LocalMetadataService::getMapServiceLayers(JNIEnv*, const std::string&)
{
    refuse(kMapServices);
}

void LocalMetadataService::getGeographics(JNIEnv*, std::vector<std::string>&)
{
    refuse(kCoordinateSystems);
}

void LocalMetadataService::getProjections(JNIEnv*, std::vector<std::string>&)
{
    refuse(kCoordinateSystems);
}

void LocalMetadataService::getRecommendPCSs(JNIEnv*, const std::string&, int,
                                            std::vector<std::string>&)
{
    refuse(kCoordinateSystems);
}

void LocalMetadataService::getRecommendPCSs(JNIEnv*, const std::string&, std::vector<std::string>&)
{
    refuse(kCoordinateSystems);
}

std::string LocalMetadataService::getCoordinatesSystemInfo(JNIEnv*, const std::string&)
{
    refuse(kCoordinateSystems);
}

std::string LocalMetadataService::getCoordinatesSystemInfo(JNIEnv*, int)
{
    refuse(kCoordinateSystems);
}

} // namespace EmbeddedHV
