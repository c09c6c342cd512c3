#pragma once

#include <cstdint>
#include <string>

namespace EmbeddedHV {

/// What the preparation keeps in memory is a number for each series at each point of time.
inline constexpr std::int64_t kMostTimePoints = 1000000;
/// Different times of records, of which many may lie in one interval.
inline constexpr std::int64_t kMostTimes = 10000000;
inline constexpr std::int64_t kMostSeries = 100000;
inline constexpr std::int64_t kMostSeriesValues = 100000000;

/// Each throws JobError beyond its limit.
void checkPointCount(const std::string& component, std::int64_t points);
void checkTimeCount(const std::string& component, std::int64_t times);
void checkSeriesCount(const std::string& component, std::int64_t series);
void checkValueCount(const std::string& component, std::int64_t points, std::int64_t series);

} // namespace EmbeddedHV
