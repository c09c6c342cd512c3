#pragma once

#include "JobError.h"
#include "maps/Geography.h"

namespace EmbeddedHV::maps {

/// The one Geography of the process; the first call loads its library, which lies beside the
/// engine's. Any thread. Throws JobError if it does not load.
Geography& geography();

/// A fault of maps as one of a job, with the step that it happened in.
JobError faultOf(const GeographyError& error, const std::string& step);

} // namespace EmbeddedHV::maps
