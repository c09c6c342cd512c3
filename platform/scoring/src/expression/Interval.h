#pragma once

#include <limits>

namespace scoring {

/// An interval of numbers. Without a margin it is unbounded on that side.
struct Interval
{
    double left = -std::numeric_limits<double>::infinity();
    double right = std::numeric_limits<double>::infinity();
    bool hasLeft = true; ///< whether the margin belongs to the interval
    bool hasRight = true;

    bool contains(double number) const
    {
        return (hasLeft ? number >= left : number > left) &&
               (hasRight ? number <= right : number < right);
    }
};

} // namespace scoring
