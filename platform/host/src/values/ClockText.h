#pragma once

#include <optional>
#include <string>

#include "values/TextParts.h"

/// An amount of seconds in fractions of a second, so that it is rounded once and carries over:
/// 59.99 with one decimal is a minute.
struct Clock
{
    Clock(double seconds, int decimals);

    bool isNegative = false;
    long long seconds = 0; ///< of the amount
    std::string fraction;  ///< decimals with a leading dot; empty for none
};

/// Maximum number of decimals of a time: doubles are not more precise today.
inline constexpr int kMostClockDecimals = 6;
/// Larger times are not shown: a double cannot distinguish their seconds.
inline constexpr double kMostClockSeconds = 1e12;

std::string twoDigits(long long number);
/// Hours, minutes, and seconds; hours and minutes.
std::string hoursText(const Clock& clock);
std::string hoursAndMinutesText(const Clock& clock);

/// h:mm or h:mm:ss, with decimals; in seconds.
std::optional<double> readHours(TextParts& parts);
/// m:ss, with decimals; in seconds.
std::optional<double> readMinutes(TextParts& parts);
