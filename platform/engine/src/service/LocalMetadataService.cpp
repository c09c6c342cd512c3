#include "service/LocalMetadataService.h"

#include "EngineException.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "components/table/ComponentTable.h"
#include "language/Parser.h"
#include "maps/GeographyLibrary.h"
#include "service/MapQuestions.h"
#include "steps/JobContext.h"
#include "steps/Planner.h"

namespace EmbeddedHV {
namespace {

/// How many systems are recommended for an area if the caller gives no count.
constexpr int kUsualCount = 10;

/// The stop request of the thread. See setStop.
thread_local std::function<bool()> stopWish;

/// Answers a question about maps. Every standard exception becomes an Exception.
template <class Question>
auto answered(Question question)
{
    try {
        return question();
    } catch (const std::exception& error) {
        throw Exception(error.what());
    }
}

/// An unreadable source gives an empty data model. Every other error of a job throws.
bool isUnreadable(const JobError& error)
{
    const std::string& id = error.id();
    return id.starts_with("HVEIO") || id == errors::kMapService;
}

/// The fields of the last statement's result. All statements are planned, so that a job that could
/// not run is rejected.
Fields outputFields(const std::string& jobText, JobContext& context)
{
    const language::Program program = language::parseProgram(jobText);
    Planner planner(program, context, componentKind);
    context.session->open(context.cancellation);
    const std::size_t count = planner.statementCount();
    if (count == 0)
        throw JobError(errors::kNoStatement, "the job has no statement, so it has no data model");
    for (std::size_t i = 0; i + 1 < count; ++i) {
        try {
            planner.planStatement(i);
        } catch (const NotYetWritten&) {
            continue; // its input is known only when the job runs
        } catch (const StageFirst&) {
            continue; // likewise
        }
    }
    try {
        return planner.planStatement(count - 1).result->fields;
    } catch (const NotYetWritten&) {
        throw JobError(errors::kStepInput,
                       "the last statement reads what the job itself writes, so "
                       "its data model is known only when the job has run");
    } catch (const StageFirst& first) {
        throw JobError(errors::kStepInput,
                       "the fields that " + first.stage->steps +
                           " gives depend on its records, so the data model is known only when the "
                           "job has run");
    }
}

} // namespace

std::string LocalMetadataService::getMetadata(JNIEnv*, const std::string& jobText, void*&, int,
                                              const Container& container)
{
    try {
        Cancellation cancellation(stopWish);
        JobContext context(_engine, _files, _dataSources);
        context.cancellation = &cancellation;
        context.plansOnly = true;
        context.message = [](const std::string&, const FaultParts&) {};
        // The job may name the container in its dataModelBuilder step. Nothing is written to it.
        context.containers.push_back(&container);
        return dataModelOf(outputFields(jobText, context));
    } catch (const JobError& error) {
        if (isUnreadable(error))
            return {};
        throw Exception(error.text());
    } catch (const std::exception& error) {
        throw Exception(std::string("the job cannot be described: ") + error.what());
    }
}

void LocalMetadataService::setStop(std::function<bool()> stop)
{
    stopWish = std::move(stop);
}

std::string LocalMetadataService::getMapServiceLayers(JNIEnv*, const std::string& url)
{
    return answered([&] { return maps::geography().serviceLayers(url, stopWish); });
}

void LocalMetadataService::getGeographics(JNIEnv*, std::vector<std::string>& names)
{
    names = answered([] { return maps::geography().systemNames(false); });
}

void LocalMetadataService::getProjections(JNIEnv*, std::vector<std::string>& names)
{
    names = answered([] { return maps::geography().systemNames(true); });
}

void LocalMetadataService::getRecommendPCSs(JNIEnv*, const std::string& input, int count,
                                            std::vector<std::string>& result)
{
    result = answered([&] { return recommendations(input, count); });
}

void LocalMetadataService::getRecommendPCSs(JNIEnv* env, const std::string& input,
                                            std::vector<std::string>& result)
{
    getRecommendPCSs(env, input, kUsualCount, result);
}

std::string LocalMetadataService::getCoordinatesSystemInfo(JNIEnv*, const std::string& name)
{
    return answered([&] { return systemInfo(maps::geography().systemNamed(name)); });
}

std::string LocalMetadataService::getCoordinatesSystemInfo(JNIEnv*, int wkid)
{
    return answered([&] { return systemInfo(maps::geography().systemOf(wkid)); });
}

} // namespace EmbeddedHV
