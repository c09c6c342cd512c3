#pragma once

#include <string>

namespace EmbeddedHV::maps {

/// Cuts a GeoJSON geometry in degrees where it crosses the antimeridian, longitude 180. Between two
/// points its lines go the shorter way around the globe; a ring that goes all the way around holds
/// the pole that it is nearer to. False if the geometry cannot be cut; the text stays then.
bool cutAtAntimeridian(std::string& shape);

} // namespace EmbeddedHV::maps
