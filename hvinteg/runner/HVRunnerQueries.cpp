#include "runner/HVRunner.h"
#include "runner/HVRunnerImpl.h"

using EmbeddedHV::MetadataService;

// Questions to the engine's metadata service. A failure gives an empty answer.

std::string HVRunner::getCoordinatesSystemInfo(const std::string& name)
{
    std::string info;
    // No system has an empty name. Do not ask the engine, which would end a present job.
    if (name.empty())
        return info;
    _impl->askService([&](MetadataService& service, JNIEnv* env) {
        info = service.getCoordinatesSystemInfo(env, name);
    });
    return info;
}

std::string HVRunner::getCoordinatesSystemInfo(int wkid)
{
    std::string info;
    _impl->askService([&](MetadataService& service, JNIEnv* env) {
        info = service.getCoordinatesSystemInfo(env, wkid);
    });
    return info;
}

void HVRunner::getGeographics(std::vector<std::string>& names)
{
    const bool answered = _impl->askService(
        [&](MetadataService& service, JNIEnv* env) { service.getGeographics(env, names); });
    if (!answered)
        names.clear();
}

void HVRunner::getProjections(std::vector<std::string>& names)
{
    const bool answered = _impl->askService(
        [&](MetadataService& service, JNIEnv* env) { service.getProjections(env, names); });
    if (!answered)
        names.clear();
}

void HVRunner::getRecommendPCSs(std::vector<std::string>& result, const std::string& input)
{
    const bool answered = _impl->askService([&](MetadataService& service, JNIEnv* env) {
        service.getRecommendPCSs(env, input, result);
    });
    if (!answered)
        result.clear();
}

void HVRunner::getRecommendPCSs(std::vector<std::string>& result, const std::string& input,
                                int count)
{
    const bool answered = _impl->askService([&](MetadataService& service, JNIEnv* env) {
        service.getRecommendPCSs(env, input, count, result);
    });
    if (!answered)
        result.clear();
}

bool HVRunner::getMapServiceLayers(const std::string& url, std::string& layers)
{
    const bool answered = _impl->askService([&](MetadataService& service, JNIEnv* env) {
        layers = service.getMapServiceLayers(env, url);
    });
    if (answered)
        return !layers.empty();
    // The empty text shows the failure, not the result.
    layers.clear();
    return true;
}
