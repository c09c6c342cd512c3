#pragma once

#include <cstdint>

#include "base/CivilTime.h"

namespace base {

/// Converts a timestamp in microseconds since 1970-01-01 to the host's double: seconds since
/// 1582-10-14. Today such doubles are 1.9 microseconds apart.
double hostSeconds(std::int64_t microseconds);
/// Converts to the double of a row: seconds since 1970-01-01.
double rowSeconds(std::int64_t microseconds);

/// Converts the double of a row to a timestamp in microseconds since 1970-01-01. `epoch` is the
/// number of seconds before 1970 from which the value was counted before. A host's double
/// represents several nearby timestamps; the roundest one is chosen, so that all multiples of 10
/// microseconds from 1900 to 3700 are unchanged. `seconds` must be within the database's range of
/// timestamps.
std::int64_t timestampOfRow(double seconds, double epoch = kHostEpoch);

/// Whether the timestamp is unchanged after conversion to a host's double, to a row's and back.
/// True for the database's infinite timestamps.
bool survivesHost(std::int64_t microseconds);

} // namespace base
