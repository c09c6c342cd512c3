#pragma once

#include <cstddef>
#include <string>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The content of an http or https address, or of a file. The time and the number of redirects are
/// limited. Throws GeographyError: Stopped within a fraction of a second after `stop` returns true,
/// TooLarge for more than `mostBytes`, Service for any other error.
std::string fetchText(const std::string& address, std::size_t mostBytes, const StopWish& stop);

} // namespace EmbeddedHV::maps
