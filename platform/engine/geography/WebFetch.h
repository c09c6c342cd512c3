#pragma once

#include <string>

#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The content of a web address, http or https, or of a file. Waits no longer than a slow server
/// needs; `stop` is asked about once a second. Throws GeographyError.
std::string fetchText(const std::string& address, const StopWish& stop);

} // namespace EmbeddedHV::maps
