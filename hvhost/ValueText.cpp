#include "ValueText.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kSecondsPerDay = 86400.0;

std::string dateText(double days)
{
    const std::chrono::sys_days day{std::chrono::days(static_cast<int>(days))};
    const std::chrono::year_month_day date(day);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return buffer.data();
}

std::string timeText(double seconds)
{
    const int whole = static_cast<int>(seconds);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02d:%02d:%02d", whole / 3600, whole / 60 % 60,
                  whole % 60);
    const double fraction = seconds - whole;
    const std::string text = buffer.data();
    return fraction > 0 ? text + shortestNumber(std::round(fraction * 1e6) / 1e6).substr(1) : text;
}

std::string timestampText(double seconds)
{
    const double days = std::floor(seconds / kSecondsPerDay);
    return dateText(days) + " " + timeText(seconds - days * kSecondsPerDay);
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
