#include "service/LocalMetadataService.h"

#include "EngineException.h"
#include "ErrorIds.h"
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

/// The fields of what the last statement gives. All statements are planned, so that a job that
/// could not run is not described.
Fields outputFields(const std::string& jobText, JobContext& context)
{
    const language::Program program = language::parseProgram(jobText);
    Planner planner(program, context);
    const std::size_t count = planner.statementCount();
    if (count == 0)
        throw JobError(errors::kNoStatement, "the job has no statement, so it has no data model");
    for (std::size_t i = 0; i + 1 < count; ++i) {
        try {
            planner.planStatement(i);
        } catch (const NotYetWritten&) {
            continue; // what it reads is known when the job runs
        }
    }
    try {
        return planner.planStatement(count - 1).result->fields;
    } catch (const NotYetWritten&) {
        throw JobError(errors::kStepInput,
                       "the last statement reads what the job itself writes, so "
                       "its data model is known only when the job has run");
    }
}

constexpr const char* kMapServices = "map services";
constexpr const char* kCoordinateSystems = "coordinate systems";

} // namespace

std::string LocalMetadataService::getMetadata(JNIEnv*, const std::string& jobText, void*&, int,
                                              const Container& container)
{
    try {
        Cancellation cancellation;
        JobContext context(_database, _files, _dataSources);
        context.cancellation = &cancellation;
        context.plansOnly = true;
        context.message = [](const std::string&, const std::string&) {};
        // The job may name it as the place of the document, though nothing is written there.
        context.containers.push_back(&container);
        return dataModelOf(outputFields(jobText, context));
    } catch (const JobError& error) {
        throw Exception(error.text());
    } catch (const std::exception& error) {
        throw Exception(std::string("the job cannot be described: ") + error.what());
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
