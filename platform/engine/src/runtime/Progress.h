#pragma once

#include <functional>

namespace EmbeddedHV {

/// Receives the finished fraction of a statement, 0 to 1, on another thread.
using Progress = std::function<void(double)>;

} // namespace EmbeddedHV
