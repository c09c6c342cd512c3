#pragma once

#include <jni.h>

#include "EHVAppSetting.h"

struct CommonOptions;

/// The engine's settings with the cluster of --engine, if the options name one.
EmbeddedHV::EHVAppSetting withEngine(EmbeddedHV::EHVAppSetting settings,
                                     const CommonOptions& options);

/// Makes later engine services of the process run on the cluster of --engine. Without one, they run
/// on the embedded engine.
void chooseEngine(const CommonOptions& options);
