#pragma once

#include <memory>

#include "datafile/Duck.h"

/// Memory limit for datasets that are written; larger ones use the disk. Reading needs far less,
/// except for very long texts.
inline constexpr const char* kHostMemoryLimit = "512MB";

/// Connects to the host's own database instance. The first call opens the instance, which lives
/// until the process ends. Any thread. Throws ErrorText.
std::unique_ptr<datafile::duck::Connection> connectToHostDatabase();
