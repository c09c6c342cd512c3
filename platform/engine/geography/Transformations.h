#pragma once

#include <memory>
#include <vector>

#include "CoordinateSystems.h"

namespace EmbeddedHV::maps {

/// The available transformations between two datums, the best first; with an area, only those for
/// the area. Empty if the datums are equal.
std::vector<TransformationMethod> methodsBetween(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                                                 const std::optional<Area>& area);

/// See Geography::mover.
std::unique_ptr<PointMover> makeMover(const CoordinateSystem& from, const CoordinateSystem& to,
                                      const std::string& method);

} // namespace EmbeddedHV::maps
