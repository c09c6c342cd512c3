#pragma once

#include <cstdint>

/// How a positive case weight is adjusted.
enum WeightAdjust : std::int32_t
{
    kWeightRound = 0,
    kWeightTruncate = 1,
    kWeightUnchanged = 2,
    kWeightNone = 3 ///< cases are not weighted
};
