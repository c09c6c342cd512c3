#pragma once

#include <memory>

#include "CoordinateSystems.h"
#include "MapService.h"

namespace EmbeddedHV::maps {

/// See Geography::openServiceLayer.
std::unique_ptr<Layer> openServiceLayer(MapService service, int layer, const LayerBounds& bounds,
                                        CoordinateSystems& systems);

} // namespace EmbeddedHV::maps
