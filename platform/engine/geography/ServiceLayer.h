#pragma once

#include <memory>

#include "CoordinateSystems.h"
#include "MapService.h"

namespace EmbeddedHV::maps {

/// See Geography::openServiceLayer.
std::unique_ptr<Layer> openServiceLayer(MapService service, int layer, std::uint64_t mostRecords,
                                        CoordinateSystems& systems);

} // namespace EmbeddedHV::maps
