#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/InputTable.h"

namespace EmbeddedHV {

/// The units that an interval is told in, the longest first.
enum class TimeUnit
{
    Year,
    Quarter,
    Month,
    Week,
    Day,
    Hour,
    Minute,
    Second
};

/// The word of docs/descriptives.md.
const char* wordOf(TimeUnit unit);

/// The regular interval on which the points of time of some fields lie: the longest one of which
/// every distance between two points is a multiple.
struct TimeInterval
{
    std::vector<std::string> fields;
    std::vector<TimeUnit> periods; ///< what each field counts; empty for dates and times
    /// Nothing if fewer than two points of time occur.
    std::optional<TimeUnit> unit;
    double increment = 0; ///< how many units; a fraction only of seconds
    std::string start;    ///< as the database writes dates and times
    std::string end;
    std::vector<std::int64_t> startPeriods; ///< of each field, if there are periods
    std::vector<std::int64_t> endPeriods;
    std::int64_t points = 0;        ///< from start to end, one every interval
    std::int64_t distinct = 0;      ///< those that occur
    std::int64_t duplicates = 0;    ///< records at a point that an earlier record has
    std::int64_t missingPoints = 0; ///< those that do not occur
    std::int64_t missing = 0;       ///< records without a point of time
};

/// Looks for the interval of a point of time: one date, time or timestamp field, or numeric fields
/// that make it up from the coarsest to the finest. Fields that cannot, give no unit. Throws
/// JobError.
TimeInterval detectInterval(const ComponentQueries& queries, const InputTable& table,
                            const Fields& point);

} // namespace EmbeddedHV
