#include "runner/HVRunner.h"
#include "runner/HVRunnerImpl.h"

using EmbeddedHV::MetadataService;

// Questions of the engine's metadata service: a failure is an empty answer.

std::string HVRunner::getCoordinatesSystemInfo(const std::string& name)
{
    std::string info;
    // No system has an empty name, so the engine is not asked, and a present job stays.
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
    // Whoever parses the empty text learns of the failure; the result says nothing of it.
    layers.clear();
    return true;
}
