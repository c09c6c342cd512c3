#pragma once

#include <cstdint>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// Plans the reading of a shape file or of a layer of a map service, from the object "geospatial"
/// of a read step. `mostRecords` is the largest number of records that will be read.
NodePtr planGeospatial(StepCall& call, const Settings& source, std::uint64_t mostRecords);

} // namespace EmbeddedHV
