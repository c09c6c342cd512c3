#pragma once

#include <cstdint>
#include <optional>

namespace EmbeddedHV {

/// The values of a bin.
struct Bin
{
    double from = 0;
    double to = 0;
    std::int64_t records = 0;
    double weight = 0;
};

/// The test whether there are as many zeros as in a Poisson distribution.
struct ZeroInflation
{
    double zeros = 0; ///< the sum of their weights
    double expected = 0;
    double statistic = 0;
    double p = 0;
};

/// The time from the first value to each value.
struct Duration
{
    bool isInDays = true; ///< otherwise in seconds
    std::optional<double> longest;
    std::optional<double> mean;
    std::optional<double> standardDeviation;
    std::optional<double> firstQuartile;
    std::optional<double> median;
    std::optional<double> thirdQuartile;
};

} // namespace EmbeddedHV
