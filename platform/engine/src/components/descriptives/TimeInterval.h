#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// The units of intervals, the longest first.
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

/// The name of the unit, as in docs/descriptives.md.
const char* wordOf(TimeUnit unit);

/// The regular interval of some points of time: the longest interval that divides every distance
/// between two points.
struct TimeInterval
{
    std::vector<std::string> fields;
    std::vector<TimeUnit> periods; ///< the period that each field counts; empty for dates and times
    /// Empty if there are fewer than two points of time.
    std::optional<TimeUnit> unit;
    double increment = 0; ///< number of units; only seconds can have a fraction
    std::string start;    ///< in the database's text form
    std::string end;
    std::vector<std::int64_t> startPeriods; ///< for each field, if there are periods
    std::vector<std::int64_t> endPeriods;
    std::int64_t points = 0;        ///< from start to end in steps of the interval
    std::int64_t distinct = 0;      ///< points that occur
    std::int64_t duplicates = 0;    ///< records at the same point as an earlier record
    std::int64_t missingPoints = 0; ///< points that do not occur
    std::int64_t missing = 0;       ///< records without a point of time
};

/// Detects the interval of a point of time: one date, time or timestamp field, or numeric fields
/// that form it, from the coarsest to the finest. If the fields do not form points of time, the
/// result has no unit. Throws JobError.
TimeInterval detectInterval(const ComponentQueries& queries, const InputTable& table,
                            const Fields& point);

} // namespace EmbeddedHV
