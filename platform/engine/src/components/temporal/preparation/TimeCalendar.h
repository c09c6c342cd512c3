#pragma once

#include <cstdint>
#include <optional>

#include "components/descriptives/TimeInterval.h"
#include "components/temporal/preparation/CivilTime.h"

namespace EmbeddedHV {

/// How far apart the points of a series are, and which days and hours count.
struct IntervalSpec
{
    static constexpr unsigned kEveryDay = 0x7f;
    static constexpr int kHoursOfDay = 24;

    TimeUnit unit = TimeUnit::Day;
    std::int64_t increment = 1;       ///< units from point to point, from 1
    unsigned workingDays = kEveryDay; ///< a bit for each weekday, the lowest for Monday
    int fromHour = 0;                 ///< the working hours of a day begin
    int toHour = kHoursOfDay;         ///< and end
    /// The day of the month on which points lie where the month is long enough; 0 for the day of
    /// the first point. For years, quarters and months.
    int dayOfMonth = 0;

    bool hasWorkingDays() const { return workingDays != kEveryDay; }
    bool hasWorkingHours() const { return fromHour != 0 || toHour != kHoursOfDay; }
    bool isWorkingDay(std::int64_t day) const
    {
        return ((workingDays >> (weekdayOf(day) - 1)) & 1U) != 0;
    }
};

/// Months of a unit, 0 for one that is no number of months.
std::int64_t monthsOf(TimeUnit unit);
/// Microseconds of a unit from a week down.
std::int64_t momentsOf(TimeUnit unit);

/// Numbers the intervals of time from a first one on, in both directions without end: interval i
/// begins at point i and ends before point i + 1.
///
/// Points by months keep their day of the month where the month has it, else lie on its last day.
/// With working hours, or units below a day on working days, intervals restart with each
/// working day; the last one of a day may be shorter.
class TimeCalendar
{
public:
    /// The interval that holds `start` gets the number 0. `start` must count by `spec`.
    TimeCalendar(const IntervalSpec& spec, Moment start);

    const IntervalSpec& spec() const { return _spec; }
    /// The number of the interval that holds the moment; nothing for a moment on a day or at an
    /// hour that does not count, or of a year outside of 1 to 9999.
    std::optional<std::int64_t> indexOf(Moment moment) const;
    /// Where the interval begins; nothing if it is in no year from 1 to 9999.
    std::optional<Moment> pointAt(std::int64_t index) const;

private:
    enum class Kind
    {
        Months,
        Steps,       ///< of equal length
        WorkingDays, ///< days of which some do not count
        WorkingSlots ///< parts of working days
    };

    static Kind kindOf(const IntervalSpec& spec);
    Moment pointInMonth(std::int64_t month) const;
    std::int64_t workingDayNumber(std::int64_t day) const;
    std::int64_t dayOfWorkingNumber(std::int64_t number) const;
    /// The number of the interval counted from a fixed one; nothing if the moment does not count.
    std::optional<std::int64_t> ordinalOf(Moment moment) const;
    Moment pointOfOrdinal(std::int64_t ordinal) const;

    IntervalSpec _spec;
    Kind _kind;
    Moment _start;          ///< of interval 0, or what it is counted from
    std::int64_t _step = 1; ///< months, microseconds or days, by the kind
    std::int64_t _slotsOfDay = 1;
    int _daysOfWeek = 7; ///< working days
    std::int64_t _firstOrdinal = 0;
};

/// Whether the moment is on a day and at an hour that count.
bool counts(const IntervalSpec& spec, Moment moment);

/// The beginning of the unit that holds the moment. Several units begin at a multiple of them in
/// the next longer unit, if they divide it: 15 minutes at the quarters of an hour.
Moment beginningOf(const IntervalSpec& spec, Moment moment);

} // namespace EmbeddedHV
