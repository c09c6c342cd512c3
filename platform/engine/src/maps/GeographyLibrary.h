#pragma once

#include "JobError.h"
#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The only Geography of the process. The first call loads its library, which is next to the
/// engine's. Any thread. Throws JobError if loading fails.
Geography& geography();

/// Converts an error of maps to one of a job. `step` is the step in which it happened.
JobError faultOf(const GeographyError& error, const std::string& step);

} // namespace EmbeddedHV::maps
