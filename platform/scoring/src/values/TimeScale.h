#pragma once

namespace scoring {

/// How a number counts time. `unit` is its unit in seconds. `origin` is its zero in seconds since
/// 1582-10-14; a time of day counts from midnight.
struct TimeScale
{
    double origin = 0;
    double unit = 1; ///< seconds
    bool isOfDay = false;

    friend bool operator==(const TimeScale&, const TimeScale&) = default;
};

} // namespace scoring
