#pragma once

#include "EngineExport.h"

namespace EmbeddedHV {

/// Sets whether a job may replace an existing file that its text names. The default is true. A host
/// program that must ask its user first passes false for job texts of the user; such a job fails
/// before it writes the file. A job may always replace containers and files in the engine's own
/// folder. The setting is process-wide. Any thread.
ENGINE_API void allowReplacingFiles(bool allowed);
/// Whether jobs may replace existing files. Any thread.
ENGINE_API bool mayReplaceFiles();

} // namespace EmbeddedHV
