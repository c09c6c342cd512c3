#include "components/temporal/preparation/CivilTime.h"

#include <algorithm>
#include <chrono>
#include <regex>

namespace EmbeddedHV {
namespace {

constexpr Moment kMomentsOfSecond = 1000000;
constexpr int kFractionDigits = 6;

std::chrono::year_month_day chronoDate(const CivilDate& date)
{
    return {std::chrono::year(date.year), std::chrono::month(static_cast<unsigned>(date.month)),
            std::chrono::day(static_cast<unsigned>(date.day))};
}

std::string padded(std::int64_t number, std::size_t digits)
{
    std::string text = std::to_string(number);
    if (text.size() < digits)
        text.insert(0, digits - text.size(), '0');
    return text;
}

std::string dateText(std::int64_t day)
{
    const CivilDate date = civilDateOf(day);
    return padded(date.year, 4) + "-" + padded(date.month, 2) + "-" + padded(date.day, 2);
}

std::string clockText(Moment time)
{
    const Moment seconds = time / kMomentsOfSecond;
    std::string text = padded(seconds / 3600, 2) + ":" + padded(seconds / 60 % 60, 2) + ":" +
                       padded(seconds % 60, 2);
    if (const Moment fraction = time % kMomentsOfSecond; fraction != 0) {
        text += "." + padded(fraction, kFractionDigits);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

/// Fractions of a second of 1 to 6 digits, in microseconds.
Moment fractionOf(std::string digits)
{
    digits.resize(kFractionDigits, '0');
    return std::stoll(digits);
}

std::optional<Moment> clockOf(const std::smatch& parts, std::size_t first)
{
    if (!parts[first].matched)
        return 0;
    const Moment hour = std::stoi(parts[first]);
    const Moment minute = std::stoi(parts[first + 1]);
    const Moment second = std::stoi(parts[first + 2]);
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return ((hour * 60 + minute) * 60 + second) * kMomentsOfSecond +
           (parts[first + 3].matched ? fractionOf(parts[first + 3]) : 0);
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
        return dateText(dayOf(moment));
    if (storage == CFField::Time)
        return clockText(timeOfDay(moment));
    return dateText(dayOf(moment)) + " " + clockText(timeOfDay(moment));
}

std::optional<Moment> momentOfText(const std::string& text)
{
    static const std::string clock = "(\\d{2}):(\\d{2}):(\\d{2})(?:\\.(\\d{1,6}))?";
    static const std::regex clockForm(clock);
    static const std::regex dateForm("(\\d{4})-(\\d{2})-(\\d{2})(?:[ T]" + clock + ")?");
    // A longer text is none of these, and not worth a search.
    constexpr std::size_t kLongestText = 26;
    std::smatch parts;
    if (text.size() > kLongestText)
        return std::nullopt;
    if (std::regex_match(text, parts, clockForm))
        return clockOf(parts, 1);
    if (!std::regex_match(text, parts, dateForm))
        return std::nullopt;
    const CivilDate date{std::stoi(parts[1]), std::stoi(parts[2]), std::stoi(parts[3])};
    const auto time = clockOf(parts, 4);
    if (!time || date.year < 1 || !chronoDate(date).ok())
        return std::nullopt;
    return dayOf(date) * kMomentsOfDay + *time;
}

} // namespace EmbeddedHV
