#pragma once

#include <optional>
#include <string>

#include "values/TextParts.h"

/// An amount of seconds that is counted in parts of a second, so that what is shown is rounded once
/// and carries over: 59.99 with one decimal is a minute.
struct Clock
{
    Clock(double seconds, int decimals);

    bool isNegative = false;
    long long seconds = 0; ///< of the amount
    std::string fraction;  ///< decimals, behind a dot; empty for none
};

/// The most decimals that a time has: doubles have no more to tell of today.
inline constexpr int kMostClockDecimals = 6;
/// Times beyond it are not shown: their seconds could not be told apart.
inline constexpr double kMostClockSeconds = 1e12;

std::string twoDigits(long long number);
/// Hours, minutes, and seconds; hours and minutes.
std::string hoursText(const Clock& clock);
std::string hoursAndMinutesText(const Clock& clock);

/// h:mm or h:mm:ss, with decimals; in seconds.
std::optional<double> readHours(TextParts& parts);
/// m:ss, with decimals; in seconds.
std::optional<double> readMinutes(TextParts& parts);
