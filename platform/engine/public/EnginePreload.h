#pragma once

#include "EngineExport.h"

namespace EmbeddedHV {

/// Opens the engine's database early. The first service manager then uses it. A host can call this
/// on a spare thread while the Java virtual machine starts. Any thread, at any time. Never reports
/// a failure: the service manager tries again and throws.
ENGINE_API void preload();

} // namespace EmbeddedHV
