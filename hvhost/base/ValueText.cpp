#include "hvhost/base/ValueText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "datafile/TimestampScale.h"

namespace {

/// Beyond this there are no valid dates or times, only the database's infinities and unsuitable
/// numbers.
constexpr double kFarthest = 1e12;
constexpr double kFarthestTimestamp = 9.2e12;

bool isInReach(double number)
{
    return std::abs(number) < kFarthest;
}

std::string dateText(double days)
{
    // The library's years end at 32767. The calendar repeats every 400 years.
    constexpr double kDaysOfCycle = 146097;
    constexpr long long kYearsOfCycle = 400;
    if (!isInReach(days))
        return shortestNumber(days);
    const double cycles = std::floor(days / kDaysOfCycle);
    const std::chrono::sys_days day{
        std::chrono::days(static_cast<int>(std::floor(days - cycles * kDaysOfCycle)))};
    const std::chrono::year_month_day date(day);
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04lld-%02u-%02u",
                  static_cast<int>(date.year()) + static_cast<long long>(cycles) * kYearsOfCycle,
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return buffer.data();
}

/// For example ".25"; empty for a whole second. The resolution is one microsecond.
std::string fractionText(double fraction)
{
    constexpr long kMicroseconds = 1000000;
    const long count = std::lround(fraction * kMicroseconds);
    if (count == 0 || count == kMicroseconds)
        return {};
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), ".%06ld", count);
    const std::string text = buffer.data();
    return text.substr(0, text.find_last_not_of('0') + 1);
}

std::string timeText(double seconds)
{
    if (!isInReach(seconds))
        return shortestNumber(seconds);
    const double length = std::abs(seconds);
    const auto whole = static_cast<long long>(length);
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%s%02lld:%02lld:%02lld", seconds < 0 ? "-" : "",
                  whole / 3600, whole / 60 % 60, whole % 60);
    return buffer.data() + fractionText(length - static_cast<double>(whole));
}

std::string timestampText(double seconds)
{
    if (!(std::abs(seconds) < kFarthestTimestamp))
        return shortestNumber(seconds);
    constexpr std::int64_t kDay = 86400000000;
    const std::int64_t moment = datafile::timestampOfRow(seconds, 0);
    const std::int64_t ofDay = (moment % kDay + kDay) % kDay;
    const std::int64_t day = (moment - ofDay) / kDay;
    return dateText(static_cast<double>(day)) + " " + timeText(datafile::rowSeconds(ofDay));
}

} // namespace

bool isNumber(CFField::StorageType storage)
{
    return storage == CFField::Integer || storage == CFField::Real;
}

std::string shortestNumber(double value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end.ptr};
}

std::string numberText(double number, CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Date:
        return dateText(number);
    case CFField::Time:
        return timeText(number);
    case CFField::Timestamp:
        return timestampText(number);
    default:
        return shortestNumber(number);
    }
}
