#pragma once

#include <memory>
#include <string>

#include "CoordinateSystems.h"

class OGRSpatialReference;

namespace EmbeddedHV::maps {

/// See Geography::openShapeFile.
std::unique_ptr<Layer> openShapeFile(const std::string& path, CoordinateSystems& systems);

/// What a coordinate system of GDAL's is: from the catalogues if it has an id there.
CoordinateSystem systemOf(const OGRSpatialReference& reference, CoordinateSystems& systems);

} // namespace EmbeddedHV::maps
