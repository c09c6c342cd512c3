#include "values/Calendar.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>

#include "datafile/TimestampScale.h"

namespace scoring {
namespace {

constexpr double kMicroseconds = 1e6;
/// Moments beyond this, in seconds from 1970-01-01, do not fit in 64 bits as microseconds.
constexpr double kFarthest = 9.2e12;
constexpr std::size_t kDateLength = 10;
constexpr std::size_t kTimeLength = 8;

double secondsOf(const std::chrono::year_month_day& day)
{
    const auto days = std::chrono::sys_days(day).time_since_epoch().count();
    return static_cast<double>(days) * kSecondsPerDay + datafile::kHostEpoch;
}

/// Accepts digits only.
std::optional<unsigned> digits(std::string_view text)
{
    unsigned value = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (error != std::errc() || end != last)
        return std::nullopt;
    return value;
}

/// A fraction of a second such as ".25". An empty text is 0.
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
    return datafile::timestampOfRow(moment - datafile::kHostEpoch);
}

} // namespace

double startOfYear(int year)
{
    return secondsOf(std::chrono::year(year) / 1 / 1);
}

double canonicalMoment(double moment)
{
    return hasMicroseconds(moment) ? datafile::hostSeconds(microsecondsOf(moment)) : moment;
}

double secondsSince(double origin, double moment)
{
    if (!hasMicroseconds(moment))
        return moment - origin;
    const auto start = static_cast<std::int64_t>(origin - datafile::kHostEpoch);
    return datafile::rowSeconds(microsecondsOf(moment) -
                                start * static_cast<std::int64_t>(kMicroseconds));
}

std::optional<double> parseDate(std::string_view text)
{
    if (text.size() != kDateLength || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digits(text.substr(0, 4));
    const auto month = digits(text.substr(5, 2));
    const auto day = digits(text.substr(8, 2));
    if (!year || !month || !day)
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(*year)),
                                           std::chrono::month(*month), std::chrono::day(*day));
    return date.ok() ? std::optional(secondsOf(date)) : std::nullopt;
}

std::optional<double> parseTime(std::string_view text)
{
    if (text.size() < kTimeLength || text[2] != ':' || text[5] != ':')
        return std::nullopt;
    const auto hours = digits(text.substr(0, 2));
    const auto minutes = digits(text.substr(3, 2));
    const auto seconds = digits(text.substr(6, 2));
    const auto rest = fraction(text.substr(kTimeLength));
    if (!hours || !minutes || !seconds || !rest || *hours > 23 || *minutes > 59 || *seconds > 59)
        return std::nullopt;
    return static_cast<double>(*hours * 3600 + *minutes * 60 + *seconds) + *rest;
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
    const auto microseconds = static_cast<std::int64_t>(*date - datafile::kHostEpoch) *
                                  static_cast<std::int64_t>(kMicroseconds) +
                              std::llround(*time * kMicroseconds);
    return canonicalMoment(datafile::kHostEpoch + datafile::rowSeconds(microseconds));
}

} // namespace scoring
