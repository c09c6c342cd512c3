#pragma once

#include <string>
#include <vector>

#include "maps/Geography.h"

namespace EmbeddedHV {

/// What is known of a coordinate system, as a JSON object.
std::string systemInfo(const maps::CoordinateSystem& system);

/// The projected systems that suit the areas that a JSON text tells of: one JSON text for each, in
/// their order, with at most `count` systems; below 0, all that suit. Throws GeographyError.
std::vector<std::string> recommendations(const std::string& input, int count);

} // namespace EmbeddedHV
