#pragma once

#include "CoordinateSystems.h"

namespace EmbeddedHV::maps {

/// See Geography::recommend.
std::vector<RecommendedSystem> recommendedSystems(CoordinateSystems& systems, const Area& area,
                                                  std::size_t most);

} // namespace EmbeddedHV::maps
