#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/base/SeriesTable.h"

namespace EmbeddedHV {

/// Points of time from `first` up to, but without, `end`.
struct TimeRange
{
    Eigen::Index first = 0;
    Eigen::Index end = 0;

    Eigen::Index size() const { return end - first; }
    bool contains(const TimeRange& other) const { return first <= other.first && other.end <= end; }
    auto operator<=>(const TimeRange&) const = default; // NOLINT(modernize-use-nullptr)
};

/// What one series is good for.
enum class SeriesState
{
    Usable,
    Constant, ///< all values are the same, up to rounding
    Excluded  ///< no values, gaps between them, or numbers that sums of squares cannot hold
};

/// The scale of a series.
struct ScaledColumn
{
    SeriesState state = SeriesState::Excluded;
    std::string problem; ///< of a series that is not usable, to go on with "the series"
    TimeRange range;     ///< of its values
    double center = 0;   ///< mean
    double scale = 1;    ///< standard deviation
    double largest = 0;  ///< largest absolute value
};

/// Series with a mean of 0 and a variance of 1 each, so that sums of products are comparable and
/// lose no digits to the level of the data.
struct ScaledSeries
{
    std::vector<ScaledColumn> columns;
    Eigen::MatrixXd values; ///< a column a series; 0 where it has no value or is not usable
};

ScaledSeries scaledSeries(const SeriesTable& table);

} // namespace EmbeddedHV
