#pragma once

#include <cstdint>

/// How a positive case weight is adjusted.
enum WeightAdjust : std::int32_t
{
    kWeightRound = 0,     ///< to the nearest integer, halves up
    kWeightTruncate = 1,  ///< to the next integer below
    kWeightUnchanged = 2, ///< not adjusted
    kWeightNone = 3       ///< cases are not weighted
};
