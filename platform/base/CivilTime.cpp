#include "base/CivilTime.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace base {
namespace {

constexpr std::size_t kDateLength = 10;
constexpr std::size_t kClockLength = 8;
constexpr std::size_t kMostFractionDigits = 6;

/// The number of a text that consists of digits. Empty for any other text.
std::optional<int> digits(std::string_view text)
{
    int value = 0;
    for (const char character : text) {
        if (character < '0' || character > '9')
            return std::nullopt;
        value = value * 10 + (character - '0');
    }
    return text.empty() ? std::nullopt : std::optional(value);
}

/// The microseconds of a fraction such as ".25". An empty text is 0.
std::optional<int> fraction(std::string_view text)
{
    if (text.empty())
        return 0;
    if (text.front() != '.' || text.size() > kMostFractionDigits + 1)
        return std::nullopt;
    auto value = digits(text.substr(1));
    for (std::size_t count = text.size() - 1; value && count < kMostFractionDigits; ++count)
        *value *= 10;
    return value;
}

} // namespace

std::int64_t microsecondsOf(double seconds)
{
    const double whole = std::floor(seconds);
    const auto rest = std::llround((seconds - whole) * static_cast<double>(kMicrosecondsPerSecond));
    return static_cast<std::int64_t>(whole) * kMicrosecondsPerSecond +
           (rest < kMicrosecondsPerSecond ? rest : 0);
}

std::string isoDate(std::int64_t day)
{
    // The library's years end at 32767. The calendar repeats every 400 years.
    constexpr std::int64_t kDaysOfCycle = 146097;
    constexpr std::int64_t kYearsOfCycle = 400;
    const std::chrono::year_month_day date{
        std::chrono::sys_days(std::chrono::days(static_cast<int>(floorRest(day, kDaysOfCycle))))};
    const std::int64_t year =
        static_cast<int>(date.year()) + floorDivided(day, kDaysOfCycle) * kYearsOfCycle;
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04lld-%02u-%02u", static_cast<long long>(year),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text.data();
}

std::string isoClock(std::int64_t microseconds, Decimals decimals)
{
    const auto part = [microseconds](std::int64_t unit) {
        return static_cast<long long>(microseconds / unit);
    };
    const auto rest = static_cast<int>(microseconds % kMicrosecondsPerSecond);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld.%06d", part(kMicrosecondsPerHour),
                  part(kMicrosecondsPerMinute) % 60, part(kMicrosecondsPerSecond) % 60, rest);
    std::string result = text.data();
    if (decimals == Decimals::Six)
        return result;
    result.erase(result.find_last_not_of('0') + 1);
    // Zeros of a whole second are erased up to the point, which ends the text.
    if (rest == 0)
        result.pop_back();
    return result;
}

std::optional<std::chrono::sys_days> dayOfIso(std::string_view text)
{
    if (text.size() != kDateLength || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digits(text.substr(0, 4));
    const auto month = digits(text.substr(5, 2));
    const auto day = digits(text.substr(8, 2));
    if (!year || !month || !day)
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    return date.ok() ? std::optional(std::chrono::sys_days(date)) : std::nullopt;
}

std::optional<std::int64_t> clockOfIso(std::string_view text)
{
    if (text.size() < kClockLength || text[2] != ':' || text[5] != ':')
        return std::nullopt;
    const auto hours = digits(text.substr(0, 2));
    const auto minutes = digits(text.substr(3, 2));
    const auto seconds = digits(text.substr(6, 2));
    const auto rest = fraction(text.substr(kClockLength));
    if (!hours || !minutes || !seconds || !rest || *hours > 23 || *minutes > 59 || *seconds > 59)
        return std::nullopt;
    return *hours * kMicrosecondsPerHour + *minutes * kMicrosecondsPerMinute +
           *seconds * kMicrosecondsPerSecond + *rest;
}

} // namespace base
