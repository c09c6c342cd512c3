#pragma once

#include <cstddef>
#include <string>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The content of a web address, http or https, or of a file. Waits no longer than a slow server
/// needs, and follows few redirects. Throws GeographyError: Stopped within a fraction of a second
/// of `stop`, TooLarge for a content of more than `mostBytes`, Service for everything else.
std::string fetchText(const std::string& address, std::size_t mostBytes, const StopWish& stop);

} // namespace EmbeddedHV::maps
