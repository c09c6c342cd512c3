#pragma once

#include <memory>

#include "EngineBackend.h"

namespace EmbeddedHV {

/// The embedded engine. Throws Exception if it cannot start.
std::unique_ptr<Backend> makeLocalBackend(JNIEnv* env, const EHVAppSetting& settings);

} // namespace EmbeddedHV
