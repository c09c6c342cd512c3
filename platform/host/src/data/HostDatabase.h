#pragma once

#include <memory>

#include "datafile/Duck.h"

/// What the datasets under construction may take before they go to the disk. A file that is read
/// needs far less, unless it has a very long text.
inline constexpr const char* kHostMemoryLimit = "512MB";

/// A connection to the host's own database instance, which opens at the first one and lives as long
/// as the process. Any thread. Throws ErrorText.
std::unique_ptr<datafile::duck::Connection> connectToHostDatabase();
