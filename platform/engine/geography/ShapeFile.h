#pragma once

#include <memory>
#include <string>

#include "CoordinateSystems.h"

class OGRSpatialReference;

namespace EmbeddedHV::maps {

/// See Geography::openShapeFile.
std::unique_ptr<Layer> openShapeFile(const std::string& path, CoordinateSystems& systems);

/// Converts a coordinate system of GDAL. If it has an id in the catalogues, the result comes from
/// there.
CoordinateSystem systemOf(const OGRSpatialReference& reference, CoordinateSystems& systems);

} // namespace EmbeddedHV::maps
