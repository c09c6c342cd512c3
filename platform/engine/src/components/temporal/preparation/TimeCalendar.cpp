#include "components/temporal/preparation/TimeCalendar.h"

#include <algorithm>
#include <bit>

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kMomentsOfHour = base::kMicrosecondsPerHour;
constexpr std::int64_t kMonthsOfYear = 12;
/// Larger numbers of intervals are those of no point of time.
constexpr std::int64_t kMostIntervals = 1000000000000;

std::int64_t roundedUpQuotient(std::int64_t value, std::int64_t by)
{
    return (value + by - 1) / by;
}

} // namespace

std::int64_t monthsOf(TimeUnit unit)
{
    switch (unit) {
    case TimeUnit::Year:
        return 12;
    case TimeUnit::Quarter:
        return 3;
    case TimeUnit::Month:
        return 1;
    default:
        return 0;
    }
}

std::int64_t momentsOf(TimeUnit unit)
{
    switch (unit) {
    case TimeUnit::Week:
        return 7 * kMomentsOfDay;
    case TimeUnit::Day:
        return kMomentsOfDay;
    case TimeUnit::Hour:
        return kMomentsOfHour;
    case TimeUnit::Minute:
        return base::kMicrosecondsPerMinute;
    default:
        return base::kMicrosecondsPerSecond;
    }
}

TimeCalendar::Kind TimeCalendar::kindOf(const IntervalSpec& spec)
{
    if (monthsOf(spec.unit) != 0)
        return Kind::Months;
    if (spec.unit == TimeUnit::Week || (!spec.hasWorkingDays() && !spec.hasWorkingHours()))
        return Kind::Steps;
    return spec.unit == TimeUnit::Day ? Kind::WorkingDays : Kind::WorkingSlots;
}

TimeCalendar::TimeCalendar(const IntervalSpec& spec, Moment start)
    : _spec(spec), _kind(kindOf(spec)), _start(start)
{
    _daysOfWeek = std::popcount(spec.workingDays & IntervalSpec::kEveryDay);
    switch (_kind) {
    case Kind::Months:
        _step = monthsOf(spec.unit) * spec.increment;
        if (_spec.dayOfMonth == 0)
            _spec.dayOfMonth = civilDateOf(dayOf(start)).day;
        break;
    case Kind::Steps:
        _step = momentsOf(spec.unit) * spec.increment;
        break;
    case Kind::WorkingDays:
        _step = spec.increment;
        break;
    case Kind::WorkingSlots:
        _step = momentsOf(spec.unit) * spec.increment;
        _slotsOfDay = roundedUpQuotient((spec.toHour - spec.fromHour) * kMomentsOfHour, _step);
        break;
    }
    // Weeks, years and days count from the start itself; slots from a day's beginning.
    _firstOrdinal = ordinalOf(start).value_or(0);
}

Moment TimeCalendar::pointInMonth(std::int64_t month) const
{
    return dayOf(dateInMonth(month, _spec.dayOfMonth)) * kMomentsOfDay + timeOfDay(_start);
}

/// The number of working days before the day, counted from a fixed Monday.
std::int64_t TimeCalendar::workingDayNumber(std::int64_t day) const
{
    const std::int64_t sinceMonday = day + 3; // 1969-12-29
    const auto before = static_cast<unsigned>(floorRest(sinceMonday, 7));
    const unsigned earlier = _spec.workingDays & ((1U << before) - 1);
    return floorDivided(sinceMonday, 7) * _daysOfWeek + std::popcount(earlier);
}

std::int64_t TimeCalendar::dayOfWorkingNumber(std::int64_t number) const
{
    std::int64_t left = floorRest(number, _daysOfWeek);
    std::int64_t day = floorDivided(number, _daysOfWeek) * 7 - 3;
    while (!_spec.isWorkingDay(day) || left-- > 0)
        ++day;
    return day;
}

std::optional<std::int64_t> TimeCalendar::ordinalOf(Moment moment) const
{
    switch (_kind) {
    case Kind::Months: {
        const std::int64_t month = monthNumber(civilDateOf(dayOf(moment)));
        const std::int64_t begun = pointInMonth(month) <= moment ? month : month - 1;
        return floorDivided(begun - monthNumber(civilDateOf(dayOf(_start))), _step);
    }
    case Kind::Steps:
        return floorDivided(moment - _start, _step);
    case Kind::WorkingDays: {
        const std::int64_t day = dayOf(moment - timeOfDay(_start));
        if (!_spec.isWorkingDay(day))
            return std::nullopt;
        return floorDivided(workingDayNumber(day) - workingDayNumber(dayOf(_start)), _step);
    }
    case Kind::WorkingSlots:
        break;
    }
    if (!counts(_spec, moment))
        return std::nullopt;
    const Moment since = timeOfDay(moment) - _spec.fromHour * kMomentsOfHour;
    return workingDayNumber(dayOf(moment)) * _slotsOfDay + since / _step;
}

Moment TimeCalendar::pointOfOrdinal(std::int64_t ordinal) const
{
    switch (_kind) {
    case Kind::Months:
        return pointInMonth(monthNumber(civilDateOf(dayOf(_start))) + ordinal * _step);
    case Kind::Steps:
        return _start + ordinal * _step;
    case Kind::WorkingDays:
        return dayOfWorkingNumber(workingDayNumber(dayOf(_start)) + ordinal * _step) *
                   kMomentsOfDay +
               timeOfDay(_start);
    case Kind::WorkingSlots:
        break;
    }
    return dayOfWorkingNumber(floorDivided(ordinal, _slotsOfDay)) * kMomentsOfDay +
           _spec.fromHour * kMomentsOfHour + floorRest(ordinal, _slotsOfDay) * _step;
}

std::optional<std::int64_t> TimeCalendar::indexOf(Moment moment) const
{
    if (!isWritable(moment))
        return std::nullopt;
    const auto ordinal = ordinalOf(moment);
    if (!ordinal)
        return std::nullopt;
    return *ordinal - _firstOrdinal;
}

std::optional<Moment> TimeCalendar::pointAt(std::int64_t index) const
{
    // The years from 1 to 9999 have fewer microseconds than 64 bits hold, by a factor of 29: what
    // is beyond them is found before it is multiplied.
    constexpr std::int64_t kMostDays = std::int64_t{366} * 10000;
    if (index < -kMostIntervals || index > kMostIntervals)
        return std::nullopt;
    const double length = _kind == Kind::Months        ? 28.0 * static_cast<double>(_step)
                          : _kind == Kind::WorkingDays ? static_cast<double>(_step)
                          : _kind == Kind::Steps
                              ? static_cast<double>(_step) / static_cast<double>(kMomentsOfDay)
                              : 1.0 / static_cast<double>(_slotsOfDay);
    if (std::abs(static_cast<double>(index)) * length > static_cast<double>(kMostDays))
        return std::nullopt;
    const Moment point = pointOfOrdinal(index + _firstOrdinal);
    return isWritable(point) ? std::optional(point) : std::nullopt;
}

bool counts(const IntervalSpec& spec, Moment moment)
{
    const Moment time = timeOfDay(moment);
    return spec.isWorkingDay(dayOf(moment)) && time >= spec.fromHour * kMomentsOfHour &&
           time < spec.toHour * kMomentsOfHour;
}

Moment beginningOf(const IntervalSpec& spec, Moment moment)
{
    const std::int64_t day = dayOf(moment);
    if (const std::int64_t months = monthsOf(spec.unit); months != 0) {
        const std::int64_t step = months * spec.increment;
        const std::int64_t grid = kMonthsOfYear % step == 0 ? step : months;
        const std::int64_t month = monthNumber(civilDateOf(day));
        return dayOf(dateInMonth(floorDivided(month, grid) * grid, 1)) * kMomentsOfDay;
    }
    if (spec.unit == TimeUnit::Week)
        return (day - (weekdayOf(day) - 1)) * kMomentsOfDay;
    if (spec.unit == TimeUnit::Day)
        return day * kMomentsOfDay;
    const std::int64_t unit = momentsOf(spec.unit);
    const std::int64_t longer = spec.unit == TimeUnit::Hour ? kMomentsOfDay : 60 * unit;
    const bool divides = spec.increment <= longer / unit && longer % (unit * spec.increment) == 0;
    const std::int64_t grid = divides ? unit * spec.increment : unit;
    return floorDivided(moment, grid) * grid;
}

} // namespace EmbeddedHV
