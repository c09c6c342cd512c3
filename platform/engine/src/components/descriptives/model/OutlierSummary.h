#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "CFDatum.h"

namespace EmbeddedHV {

/// Records on one side of the bounds, and the sum of their weights.
struct OutlierCount
{
    std::int64_t records = 0;
    double weight = 0;
    std::int64_t extremes = 0; ///< records among them beyond the extreme bound
};

struct OutlyingValue
{
    CFDatum value;
    std::int64_t records = 0;
    double weight = 0;
    bool isExtreme = false;
};

/// The outliers of a field. A value on a bound is not an outlier.
struct OutlierSummary
{
    double lower = 0;
    double upper = 0;
    double extremeLower = 0;
    double extremeUpper = 0;
    OutlierCount below;
    OutlierCount above;
    /// The least and the greatest value that is not an outlier.
    std::optional<double> least;
    std::optional<double> greatest;
    /// The quartiles before outliers are trimmed or winsorized.
    std::optional<double> firstQuartile;
    std::optional<double> median;
    std::optional<double> thirdQuartile;
    std::vector<OutlyingValue> values; ///< the values farthest from the bounds, farthest first
};

} // namespace EmbeddedHV
