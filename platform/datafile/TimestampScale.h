#pragma once

#include <cstdint>

namespace datafile {

/// From 1582-10-14, where the host's seconds begin, to 1970-01-01, where those of rows begin.
inline constexpr double kHostEpoch = 12219379200.0;

/// A timestamp, in microseconds since 1970-01-01, as the double of a host: seconds since
/// 1582-10-14. Today such doubles are 1.9 microseconds apart.
double hostSeconds(std::int64_t microseconds);
/// The same as the double of a row: seconds since 1970-01-01.
double rowSeconds(std::int64_t microseconds);

/// The timestamp, in microseconds since 1970-01-01, that a double of a row stands for. `epoch` says
/// how the value was kept before: in seconds from so many seconds before 1970. A double of a host
/// stands for every timestamp near it: the roundest one is meant, so that all multiples of 10
/// microseconds from 1900 to 3700 come back unchanged. `seconds` must be within the range of the
/// database's timestamps.
std::int64_t timestampOfRow(double seconds, double epoch = kHostEpoch);

/// Whether the timestamp is unchanged after a way through a host's double and a row's. True for the
/// database's infinite timestamps.
bool survivesHost(std::int64_t microseconds);

} // namespace datafile
