#pragma once

#include <string>

#include "runtime/QueryFaults.h"

namespace EmbeddedHV {

/// The meaning of the database's error message about a statement. The message becomes the detail.
StatementFault duckFault(const std::string& message);

} // namespace EmbeddedHV
