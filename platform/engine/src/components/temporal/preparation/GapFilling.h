#pragma once

#include <cstdint>
#include <span>

namespace EmbeddedHV {

/// What replaces a missing value between two values of a series.
enum class GapFilling
{
    Linear,     ///< on the straight line between the values around the gap
    Neighbours, ///< the mean of the values around the gap
    Last,       ///< the value before the gap
    None
};

/// The values and gaps of a series between its first and its last value.
struct GapCount
{
    std::int64_t observed = 0;
    std::int64_t missing = 0;
};

GapCount countGaps(std::span<const double> values);
/// Replaces what is missing, not-a-number, between two values; never before the first value or
/// behind the last.
void fillGaps(std::span<double> values, GapFilling filling);

} // namespace EmbeddedHV
