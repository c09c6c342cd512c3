#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string_view>

/// The host's calendar: seconds since 1582-10-14 and their days. Earlier days are negative.

inline constexpr int kMonths = 12;
inline constexpr int kWeekdays = 7;

inline constexpr std::array<std::string_view, kMonths> kMonthNames{
    "JANUARY", "FEBRUARY", "MARCH",     "APRIL",   "MAY",      "JUNE",
    "JULY",    "AUGUST",   "SEPTEMBER", "OCTOBER", "NOVEMBER", "DECEMBER"};
inline constexpr std::array<std::string_view, kWeekdays> kWeekdayNames{
    "SUNDAY", "MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY"};

/// The day of a point in time; nullopt outside the years 1 to 9999.
std::optional<std::chrono::sys_days> dayOfSeconds(double seconds);
double secondsOfDay(std::chrono::sys_days day);

/// Counted from 1.
int dayOfYear(std::chrono::sys_days day);
std::chrono::sys_days firstOfYear(int year);

/// Two-digit years represent 1940 to 2039.
bool hasShortYear(int year);
int yearOfShort(int digits);

/// The number, from 1, of the month or weekday whose name begins with a word of at least three
/// letters.
std::optional<int> monthOfName(std::string_view upper);
std::optional<int> weekdayOfName(std::string_view upper);
