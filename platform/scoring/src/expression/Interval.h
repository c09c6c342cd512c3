#pragma once

#include <limits>

namespace scoring {

/// A stretch of numbers; without a margin it goes on without end.
struct Interval
{
    double left = -std::numeric_limits<double>::infinity();
    double right = std::numeric_limits<double>::infinity();
    bool hasLeft = true; ///< the margins belong to it
    bool hasRight = true;

    bool contains(double number) const
    {
        return (hasLeft ? number >= left : number > left) &&
               (hasRight ? number <= right : number < right);
    }
};

} // namespace scoring
