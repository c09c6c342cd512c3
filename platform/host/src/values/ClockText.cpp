#include "values/ClockText.h"

#include <cmath>

namespace {

constexpr int kPerMinute = 60;
constexpr int kPerHour = 3600;

// A number below 60 behind a colon.
std::optional<int> readSixtieth(TextParts& parts)
{
    if (!parts.take(":"))
        return std::nullopt;
    const std::optional<int> number = parts.number(2);
    return number && *number < kPerMinute ? number : std::nullopt;
}

} // namespace

Clock::Clock(double value, int decimals) : isNegative(value < 0)
{
    const double scale = std::pow(10.0, decimals);
    const auto ticks = std::llround(std::fabs(value) * scale);
    const auto perSecond = static_cast<long long>(scale);
    seconds = ticks / perSecond;
    if (decimals > 0) {
        const std::string digits = std::to_string(ticks % perSecond);
        fraction =
            "." + std::string(static_cast<std::size_t>(decimals) - digits.size(), '0') + digits;
    }
    isNegative = isNegative && ticks > 0;
}

std::string twoDigits(long long number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string hoursAndMinutesText(const Clock& clock)
{
    return twoDigits(clock.seconds / kPerHour) + ":" +
           twoDigits(clock.seconds % kPerHour / kPerMinute);
}

std::string hoursText(const Clock& clock)
{
    return hoursAndMinutesText(clock) + ":" + twoDigits(clock.seconds % kPerMinute) +
           clock.fraction;
}

std::optional<double> readHours(TextParts& parts)
{
    const std::optional<double> hours = parts.amount();
    const std::optional<int> minutes = readSixtieth(parts);
    if (!hours || !minutes)
        return std::nullopt;
    const double whole = *hours * kPerHour + *minutes * kPerMinute;
    if (!parts.rest().starts_with(":"))
        return whole;
    const std::optional<int> seconds = readSixtieth(parts);
    return seconds ? std::optional(whole + *seconds + parts.fraction()) : std::nullopt;
}

std::optional<double> readMinutes(TextParts& parts)
{
    const std::optional<double> minutes = parts.amount();
    const std::optional<int> seconds = readSixtieth(parts);
    if (!minutes || !seconds)
        return std::nullopt;
    return *minutes * kPerMinute + *seconds + parts.fraction();
}
