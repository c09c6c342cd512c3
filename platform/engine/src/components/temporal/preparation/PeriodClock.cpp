#include "components/temporal/preparation/PeriodClock.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

constexpr int kFirstYear = 1970;
constexpr std::int64_t kLastYear = 9999;
/// Without a year the outermost period counts on, up to here.
constexpr std::int64_t kMostOfOutermost = 10000000;

/// The numbers that a period runs through within the one before it.
struct CycleRange
{
    std::int64_t least;
    std::int64_t most;
};

CycleRange cycleOf(TimeUnit unit)
{
    switch (unit) {
    case TimeUnit::Year:
        return {1, kLastYear};
    case TimeUnit::Quarter:
        return {1, 4};
    case TimeUnit::Month:
        return {1, 12};
    case TimeUnit::Week:
        return {1, 53};
    case TimeUnit::Day:
        return {1, 366};
    case TimeUnit::Hour:
        return {0, 23};
    default:
        return {0, 59};
    }
}

/// The year by ISO 8601 of the week that holds the day: that of its Thursday.
int isoYearOf(std::int64_t day)
{
    return civilDateOf(day - weekdayOf(day) + 4).year;
}

} // namespace

PeriodClock::PeriodClock(std::vector<TimeUnit> periods) : _periods(std::move(periods)) {}

bool PeriodClock::has(TimeUnit unit) const
{
    return std::find(_periods.begin(), _periods.end(), unit) != _periods.end();
}

bool PeriodClock::isInRange(std::size_t place, std::int64_t number) const
{
    const CycleRange cycle = cycleOf(_periods[place]);
    const bool counts = place == 0 && _periods[place] != TimeUnit::Year;
    return number >= cycle.least && number <= (counts ? kMostOfOutermost : cycle.most);
}

std::optional<std::int64_t> PeriodClock::number(TimeUnit unit,
                                                const std::vector<std::int64_t>& numbers) const
{
    const auto found = std::find(_periods.begin(), _periods.end(), unit);
    if (found == _periods.end())
        return std::nullopt;
    return numbers[static_cast<std::size_t>(found - _periods.begin())];
}

/// The first day of the year, quarter, month or week that the numbers name.
std::int64_t PeriodClock::firstDayOf(const std::vector<std::int64_t>& numbers) const
{
    const auto year = static_cast<int>(number(TimeUnit::Year, numbers).value_or(kFirstYear));
    if (has(TimeUnit::Week))
        return firstIsoMonday(year) + 7 * (*number(TimeUnit::Week, numbers) - 1);
    const auto quarter = number(TimeUnit::Quarter, numbers);
    const auto month = number(TimeUnit::Month, numbers);
    std::int64_t months = std::int64_t{12} * year;
    if (quarter && month)
        months += (*quarter - 1) / 4 * 12 + *month - 1;
    else if (quarter)
        months += 3 * (*quarter - 1);
    else if (month)
        months += *month - 1;
    return dayOf(dateInMonth(months, 1));
}

std::optional<Moment> PeriodClock::momentOf(const std::vector<std::int64_t>& numbers) const
{
    for (std::size_t i = 0; i < _periods.size(); ++i)
        if (!isInRange(i, numbers[i]))
            return std::nullopt;
    const std::int64_t day = firstDayOf(numbers) + number(TimeUnit::Day, numbers).value_or(1) - 1;
    Moment moment = day * kMomentsOfDay;
    moment += number(TimeUnit::Hour, numbers).value_or(0) * base::kMicrosecondsPerHour;
    moment += number(TimeUnit::Minute, numbers).value_or(0) * base::kMicrosecondsPerMinute;
    moment += number(TimeUnit::Second, numbers).value_or(0) * base::kMicrosecondsPerSecond;
    // What is too many days for the month, or a month outside of its quarter, has other numbers.
    if (!isWritable(moment) || numbersOf(moment) != numbers)
        return std::nullopt;
    return moment;
}

std::int64_t PeriodClock::firstDayAround(std::int64_t day) const
{
    if (has(TimeUnit::Week))
        return day - weekdayOf(day) + 1;
    const CivilDate date = civilDateOf(day);
    if (has(TimeUnit::Month))
        return day - date.day + 1;
    if (has(TimeUnit::Quarter))
        return dayOf(CivilDate{date.year, (date.month - 1) / 3 * 3 + 1, 1});
    return dayOf(CivilDate{date.year, 1, 1});
}

std::int64_t PeriodClock::numberOf(TimeUnit unit, bool isOutermost, Moment moment) const
{
    const std::int64_t day = dayOf(moment);
    const CivilDate date = civilDateOf(day);
    const std::int64_t months = monthNumber(date) - std::int64_t{12} * kFirstYear;
    switch (unit) {
    case TimeUnit::Year:
        return has(TimeUnit::Week) ? isoYearOf(day) : date.year;
    case TimeUnit::Quarter:
        return isOutermost ? floorDivided(months, 3) + 1 : (date.month - 1) / 3 + 1;
    case TimeUnit::Month:
        return isOutermost ? months + 1 : date.month;
    case TimeUnit::Week:
        return floorDivided(day - firstIsoMonday(isOutermost ? kFirstYear : isoYearOf(day)), 7) + 1;
    case TimeUnit::Day:
        return isOutermost ? day + 1 : day - firstDayAround(day) + 1;
    case TimeUnit::Hour:
        return (isOutermost ? moment : timeOfDay(moment)) / base::kMicrosecondsPerHour;
    case TimeUnit::Minute:
        return isOutermost ? moment / base::kMicrosecondsPerMinute
                           : timeOfDay(moment) / base::kMicrosecondsPerMinute % 60;
    case TimeUnit::Second:
        return isOutermost ? moment / base::kMicrosecondsPerSecond
                           : timeOfDay(moment) / base::kMicrosecondsPerSecond % 60;
    }
    return 0;
}

std::vector<std::int64_t> PeriodClock::numbersOf(Moment moment) const
{
    std::vector<std::int64_t> numbers;
    numbers.reserve(_periods.size());
    for (std::size_t i = 0; i < _periods.size(); ++i)
        numbers.push_back(numberOf(_periods[i], i == 0, moment));
    return numbers;
}

} // namespace EmbeddedHV
