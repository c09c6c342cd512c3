#include "components/descriptives/MomentText.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace EmbeddedHV {
namespace {

constexpr double kSecondsOfDay = 86400;
/// Seconds from 1970-01-01 to 0001-01-01 and to 10000-01-01.
constexpr double kFirst = -62135596800;
constexpr double kEnd = 253402300800;

} // namespace

std::optional<std::string> dateText(double seconds)
{
    if (!(seconds >= kFirst && seconds < kEnd))
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::sys_days(
        std::chrono::days(static_cast<int>(std::floor(seconds / kSecondsOfDay))))};
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

std::string timeText(double seconds)
{
    const double ofDay = seconds - std::floor(seconds / kSecondsOfDay) * kSecondsOfDay;
    const auto whole = static_cast<int>(ofDay);
    const auto micros = static_cast<int>(std::lround((ofDay - whole) * 1e6));
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
    std::string result = text;
    // Drop a fraction that rounds up to a full second. Carrying it over could change the day.
    if (micros == 0 || micros >= 1000000)
        return result;
    std::snprintf(text, sizeof text, ".%06d", micros);
    result += text;
    return result.substr(0, result.find_last_not_of('0') + 1);
}

std::optional<std::string> timestampText(double seconds)
{
    const auto date = dateText(seconds);
    return date ? std::optional(*date + "T" + timeText(seconds) + "Z") : std::nullopt;
}

} // namespace EmbeddedHV
