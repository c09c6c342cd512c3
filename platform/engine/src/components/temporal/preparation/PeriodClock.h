#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "components/descriptives/TimeInterval.h"
#include "components/temporal/preparation/CivilTime.h"

namespace EmbeddedHV {

/// Turns the numbers of cyclic fields, such as year, week and day, into moments and back.
///
/// Weeks are those of ISO 8601, and the year beside them is that of the week. A day is one of the
/// week, of the month, of the quarter or of the year, by the period before it. Without a year the
/// periods begin in 1970, and the outermost one counts on beyond its cycle: month 13 follows 12.
class PeriodClock
{
public:
    /// What the fields count, each finer than the one before it; at least one. A week goes with no
    /// quarter and no month.
    explicit PeriodClock(std::vector<TimeUnit> periods);

    const std::vector<TimeUnit>& periods() const { return _periods; }
    /// The beginning of the time that the numbers name; nothing if they name none, as week 53 of a
    /// year of 52 weeks, or 31 April.
    std::optional<Moment> momentOf(const std::vector<std::int64_t>& numbers) const;
    /// The numbers of the time that holds the moment.
    std::vector<std::int64_t> numbersOf(Moment moment) const;

private:
    bool has(TimeUnit unit) const;
    bool isInRange(std::size_t place, std::int64_t number) const;
    std::optional<std::int64_t> number(TimeUnit unit,
                                       const std::vector<std::int64_t>& numbers) const;
    std::int64_t firstDayOf(const std::vector<std::int64_t>& numbers) const;
    std::int64_t numberOf(TimeUnit unit, bool isOutermost, Moment moment) const;
    std::int64_t firstDayAround(std::int64_t day) const;

    std::vector<TimeUnit> _periods;
};

} // namespace EmbeddedHV
