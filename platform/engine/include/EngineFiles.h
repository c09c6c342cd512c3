#pragma once

#include "EngineExport.h"

namespace EmbeddedHV {

/// Whether jobs may replace files that their texts name: those that were there before the job. At
/// first they may. A host program that asks its user first says no for the texts that come from
/// the user; such a job fails before it writes the file. Containers and files in the engine's own
/// folder are always replaced. Holds for jobs that execute from then on. Any thread.
ENGINE_API void allowReplacingFiles(bool allowed);
ENGINE_API bool mayReplaceFiles();

} // namespace EmbeddedHV
