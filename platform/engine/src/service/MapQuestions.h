#pragma once

#include <string>
#include <vector>

#include "maps/Geography.h"

namespace EmbeddedHV {

/// The properties of a coordinate system, as a JSON object.
std::string systemInfo(const maps::CoordinateSystem& system);

/// The projected systems that suit the areas in a JSON text. Returns one JSON text for each area,
/// in the order of `input`, with at most `count` systems; a negative `count` means all. Throws
/// GeographyError.
std::vector<std::string> recommendations(const std::string& input, int count);

} // namespace EmbeddedHV
