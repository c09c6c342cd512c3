#pragma once

namespace scoring {

/// How a number counts time: in units of so many seconds, from an origin in the seconds that
/// moments are, or from midnight.
struct TimeScale
{
    double origin = 0;
    double unit = 1; ///< seconds
    bool isOfDay = false;

    friend bool operator==(const TimeScale&, const TimeScale&) = default;
};

} // namespace scoring
