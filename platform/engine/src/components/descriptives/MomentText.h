#pragma once

#include <optional>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// Seconds since 1970-01-01 as an ISO 8601 date. Empty outside the years 1 to 9999.
std::optional<std::string> dateText(double seconds);
/// Seconds since 1970-01-01 as an ISO 8601 date and time, with "T" and "Z". Empty outside the years
/// 1 to 9999.
std::optional<std::string> timestampText(double seconds);
/// The time of day of a number of seconds, in ISO 8601 form.
std::string timeText(double seconds);

} // namespace EmbeddedHV
