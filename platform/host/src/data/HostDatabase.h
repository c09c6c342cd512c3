#pragma once

#include <memory>

#include "datafile/Duck.h"

/// A connection to the host's own database instance, which opens at the first one and lives as long
/// as the process. Any thread. Throws ErrorText.
std::unique_ptr<datafile::duck::Connection> connectToHostDatabase();
