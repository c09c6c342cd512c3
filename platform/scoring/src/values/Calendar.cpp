#include "values/Calendar.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>

#include "base/CivilTime.h"
#include "base/TimestampScale.h"

namespace scoring {
namespace {

/// Moments beyond this, in seconds from 1970-01-01, do not fit in 64 bits as microseconds.
constexpr double kFarthest = 9.2e12;
constexpr std::size_t kDateLength = 10;
constexpr std::size_t kTimeLength = 8;

double secondsOf(std::chrono::sys_days day)
{
    return static_cast<double>((day - base::kHostOrigin).count()) * base::kSecondsPerDay;
}

/// A fraction of a second such as ".25", with any number of digits. An empty text is 0.
std::optional<double> fraction(std::string_view text)
{
    if (text.empty())
        return 0.0;
    const std::string_view decimals = text.substr(1);
    if (text.front() != '.' || decimals.empty() ||
        decimals.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// Whether the moment has a fraction of a second, and can be converted to microseconds.
bool hasMicroseconds(double moment)
{
    return moment != std::floor(moment) && std::fabs(moment) < kFarthest;
}

/// Microseconds since 1970-01-01.
std::int64_t microsecondsOf(double moment)
{
    return base::timestampOfRow(moment - base::kHostEpoch);
}

} // namespace

double startOfYear(int year)
{
    return secondsOf(std::chrono::sys_days(std::chrono::year(year) / 1 / 1));
}

double canonicalMoment(double moment)
{
    return hasMicroseconds(moment) ? base::hostSeconds(microsecondsOf(moment)) : moment;
}

double secondsSince(double origin, double moment)
{
    if (!hasMicroseconds(moment))
        return moment - origin;
    const auto start = static_cast<std::int64_t>(origin - base::kHostEpoch);
    return base::rowSeconds(microsecondsOf(moment) - start * base::kMicrosecondsPerSecond);
}

std::optional<double> parseDate(std::string_view text)
{
    const auto day = base::dayOfIso(text);
    return day ? std::optional(secondsOf(*day)) : std::nullopt;
}

std::optional<double> parseTime(std::string_view text)
{
    const auto whole = base::clockOfIso(text.substr(0, kTimeLength));
    if (!whole)
        return std::nullopt;
    const auto rest = fraction(text.substr(kTimeLength));
    if (!rest)
        return std::nullopt;
    const auto seconds = *whole / base::kMicrosecondsPerSecond; // has no fraction
    return static_cast<double>(seconds) + *rest;
}

std::optional<double> parseMoment(std::string_view text)
{
    if (text.size() <= kDateLength || (text[kDateLength] != 'T' && text[kDateLength] != ' '))
        return std::nullopt;
    const auto date = parseDate(text.substr(0, kDateLength));
    const auto time = parseTime(text.substr(kDateLength + 1));
    if (!date || !time)
        return std::nullopt;
    // The same steps as for a timestamp of a row.
    const auto microseconds =
        static_cast<std::int64_t>(*date - base::kHostEpoch) * base::kMicrosecondsPerSecond +
        std::llround(*time * static_cast<double>(base::kMicrosecondsPerSecond));
    return canonicalMoment(base::kHostEpoch + base::rowSeconds(microseconds));
}

} // namespace scoring
