#pragma once

#include <cstdint>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The records of a shape file or of a layer of a map service, as the object "geospatial" of a read
/// step tells. `mostRecords` is how many will be read at most.
NodePtr planGeospatial(StepCall& call, const Settings& source, std::uint64_t mostRecords);

} // namespace EmbeddedHV
