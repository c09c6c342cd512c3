#pragma once

#include <optional>
#include <vector>

namespace EmbeddedHV {

/// Edges of bins that follow the calendar: Mondays, or the first days of months, of every second,
/// third or sixth month, or of years. All bins are at least `width` wide, and contain all values
/// from `minimum` to `maximum`. All are in seconds since 1970-01-01. nullopt if the width is at
/// most a day, or if an edge would be outside the years 1 to 9999.
std::optional<std::vector<double>> calendarEdges(double minimum, double maximum, double width);

} // namespace EmbeddedHV
