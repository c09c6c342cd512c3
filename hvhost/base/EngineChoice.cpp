#include "hvhost/base/EngineChoice.h"

#include "EngineBackend.h"
#include "hvhost/base/CommonOptions.h"

using EmbeddedHV::EHVAppSetting;

EHVAppSetting withEngine(EHVAppSetting settings, const CommonOptions& options)
{
    if (options.engine.empty())
        return settings;
    settings.addProperty(EmbeddedHV::kBackendSetting, "spark");
    settings.addProperty(EmbeddedHV::kUrlSetting, options.engine);
    settings.addProperty(EmbeddedHV::kScratchSetting, options.engineScratch);
    settings.addProperty(EmbeddedHV::kSumsSetting, options.engineSums);
    return settings;
}

void chooseEngine(const CommonOptions& options)
{
    if (options.engine.empty())
        return;
    EmbeddedHV::setBackendFactory([engine = options](JNIEnv* env, const EHVAppSetting& settings) {
        return EmbeddedHV::makeNamedBackend(env, withEngine(settings, engine));
    });
}
