#pragma once

#include <memory>
#include <vector>

#include "CoordinateSystems.h"

namespace EmbeddedHV::maps {

/// The ways from one datum to another that work here, those of the area only if there is one; none
/// if the datums agree. The best comes first.
std::vector<TransformationMethod> methodsBetween(PJ_CONTEXT* context, const PJ* from, const PJ* to,
                                                 const std::optional<Area>& area);

/// See Geography::mover.
std::unique_ptr<PointMover> makeMover(const CoordinateSystem& from, const CoordinateSystem& to,
                                      const std::string& method);

} // namespace EmbeddedHV::maps
