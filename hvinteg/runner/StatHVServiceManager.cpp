#include "runner/StatHVServiceManager.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "CFAppHost.h"
#include "EHVAppSetting.h"
#include "HVServiceManager.h"
#include "PathFactory.h"
#include "bridge/JNIObjectManager.h"
#include "support/Conversions.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"
#include "support/Tracing.h"
#include "support/Transcoding.h"

namespace {

/// Texts for the start of the engine, from the host's present settings.
struct StartSettings
{
    std::string componentsPath;
    std::string locale;
    std::string spillPath;
    std::string scratchPath;
    std::string threads;
    std::string cacheSize;
};

// These threads exist for all jobs, so the engine does not use all processors.
constexpr int kMostThreads = 4;
constexpr int kCacheBytes = 0x400000;

/// Reads all settings again: a restarted service uses the host's present ones.
StartSettings gatherSettings()
{
    CFAppHost::update();
    const CFAppHost& host = *CFAppHost::getInstance();
    // Only this text is in the host's encoding; the engine takes UTF-8.
    const std::string installation = PathFactory::getPathInstance()->getInstallationPath();
    const std::string installationPath = transcodeToUTF8(installation.c_str(), nullptr);
    const std::string tempRoot = FormalizeFilePath(host.getTempDirectory(), true);

    StartSettings settings;
    settings.componentsPath = JoinFilePath(installationPath, "hv/af/components");
    settings.locale = host.getLocale();
    settings.spillPath = tempRoot + "ae";
    settings.scratchPath = tempRoot + "af";
    settings.threads = Integer2String(std::min(host.getMaxCompThreads(), kMostThreads));
    settings.cacheSize = Integer2String(kCacheBytes);
    return settings;
}

void addProperties(EmbeddedHV::EHVAppSetting& target, const StartSettings& settings)
{
    target.addProperty("ae.temp.path", settings.spillPath);
    target.addProperty("af.temp.path", settings.scratchPath);
    target.addProperty("mmr.threads", settings.threads);
    target.addProperty("af.io.cache.size", settings.cacheSize);
}

void logSettings(const StartSettings& settings)
{
    WriteLog("HV Analytic Root: " + HVSimpleFile::GetAnalyticRoot());
    WriteLog("hv.af.components: " + settings.componentsPath);
    WriteLog("locale: " + settings.locale);
    WriteLog("ae.temp.path: " + settings.spillPath);
    WriteLog("af.temp.path: " + settings.scratchPath);
    WriteLog("mmr.threads: " + settings.threads);
    WriteLog("af.io.cache.size: " + settings.cacheSize);
}

} // namespace

// A plain pointer, so that no static destructor ends the engine without the host.
EmbeddedHV::HVServiceManager* StatHVServiceManager::_service = nullptr;

EmbeddedHV::HVServiceManager* StatHVServiceManager::get(bool log)
{
    if (_service != nullptr)
        return _service;
    const StartSettings settings = gatherSettings();
    EmbeddedHV::EHVAppSetting appSetting(HVSimpleFile::GetAnalyticRootUTF(),
                                         settings.componentsPath, settings.locale);
    addProperties(appSetting, settings);
    if (log)
        logSettings(settings);
    // Last, because it starts the virtual machine: invalid settings fail before that.
    JNIEnv* const env = JNIObjectManager::getManager()->getEnv();
    _service = std::make_unique<EmbeddedHV::HVServiceManager>(env, appSetting).release();
    return _service;
}

void StatHVServiceManager::shutdown()
{
    const std::unique_ptr<EmbeddedHV::HVServiceManager> ended(std::exchange(_service, nullptr));
}
