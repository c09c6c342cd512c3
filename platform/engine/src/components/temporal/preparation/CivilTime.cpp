#include "components/temporal/preparation/CivilTime.h"

#include <algorithm>
#include <chrono>
#include <string_view>

namespace EmbeddedHV {
namespace {

std::chrono::year_month_day chronoDate(const CivilDate& date)
{
    return {std::chrono::year(date.year), std::chrono::month(static_cast<unsigned>(date.month)),
            std::chrono::day(static_cast<unsigned>(date.day))};
}

} // namespace

CivilDate civilDateOf(std::int64_t day)
{
    const std::chrono::year_month_day date{
        std::chrono::sys_days(std::chrono::days(static_cast<int>(day)))};
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::int64_t dayOf(const CivilDate& date)
{
    return std::chrono::sys_days(chronoDate(date)).time_since_epoch().count();
}

int lastDayOfMonth(int year, int month)
{
    const std::chrono::year_month_day_last last(
        std::chrono::year(year),
        std::chrono::month_day_last(std::chrono::month(static_cast<unsigned>(month))));
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

int weekdayOf(std::int64_t day)
{
    // 1970-01-01 was a Thursday.
    return static_cast<int>(floorRest(day + 3, 7)) + 1;
}

std::int64_t firstIsoMonday(int year)
{
    const std::int64_t fourth = dayOf(CivilDate{year, 1, 4});
    return fourth - (weekdayOf(fourth) - 1);
}

std::int64_t monthNumber(const CivilDate& date)
{
    return std::int64_t{12} * date.year + date.month - 1;
}

CivilDate dateInMonth(std::int64_t monthNumber, int day)
{
    const int year = static_cast<int>(floorDivided(monthNumber, 12));
    const int month = static_cast<int>(floorRest(monthNumber, 12)) + 1;
    return {year, month, std::min(day, lastDayOfMonth(year, month))};
}

bool isWritable(Moment moment)
{
    static const std::int64_t first = dayOf(CivilDate{1, 1, 1});
    static const std::int64_t last = dayOf(CivilDate{9999, 12, 31});
    const std::int64_t day = dayOf(moment);
    return day >= first && day <= last;
}

std::string momentText(Moment moment, CFField::StorageType storage)
{
    if (storage == CFField::Date)
        return base::isoDate(dayOf(moment));
    if (storage == CFField::Time)
        return base::isoClock(timeOfDay(moment));
    return base::isoDate(dayOf(moment)) + " " + base::isoClock(timeOfDay(moment));
}

std::optional<Moment> momentOfText(const std::string& text)
{
    constexpr std::size_t kDateLength = 10;
    const std::string_view all(text);
    if (const auto clock = base::clockOfIso(all))
        return clock;
    const auto date = base::dayOfIso(all.substr(0, kDateLength));
    if (!date || std::chrono::year_month_day(*date).year() < std::chrono::year(1))
        return std::nullopt;
    const Moment day = date->time_since_epoch().count() * kMomentsOfDay;
    if (all.size() == kDateLength)
        return day;
    const auto clock = base::clockOfIso(all.substr(kDateLength + 1));
    const bool isJoined = all[kDateLength] == ' ' || all[kDateLength] == 'T';
    return clock && isJoined ? std::optional(day + *clock) : std::nullopt;
}

} // namespace EmbeddedHV
