#pragma once

#include <memory>

#include "EngineBackend.h"

namespace EmbeddedHV {

/// The engine of this process, whose jobs run on its own database. Throws Exception if it cannot
/// start.
std::unique_ptr<Backend> makeLocalBackend(JNIEnv* env, const EHVAppSetting& settings);
/// The engine of this process, whose jobs run on a Spark cluster. Loads nothing of the cluster's
/// client. Throws Exception if a setting is wrong or the client is not installed.
std::unique_ptr<Backend> makeSparkBackend(JNIEnv* env, const EHVAppSetting& settings);

} // namespace EmbeddedHV
