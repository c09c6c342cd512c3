#pragma once

#include <optional>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// Seconds since 1970-01-01, or of the day, as ISO 8601 writes them: a date, a time or, with a "T"
/// and a "Z" as a point of time, both. Nothing outside of the years 1 to 9999.
std::optional<std::string> dateText(double seconds);
std::optional<std::string> timestampText(double seconds);
std::string timeText(double seconds);

} // namespace EmbeddedHV
