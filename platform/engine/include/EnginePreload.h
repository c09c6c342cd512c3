#pragma once

#include "EngineExport.h"

namespace EmbeddedHV {

/// Opens the engine's database ahead of the first service manager, which then adopts it. A host
/// that has a thread to spare calls it there while the Java virtual machine starts. Any thread, at
/// any time; a failure shows when the service starts.
ENGINE_API void preload();

} // namespace EmbeddedHV
