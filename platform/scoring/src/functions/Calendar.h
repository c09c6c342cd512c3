#pragma once

#include <optional>
#include <string_view>

namespace scoring {

/// Dates and moments are seconds since 1582-10-14, in the Gregorian calendar.

inline constexpr double kSecondsPerDay = 86400;
inline constexpr int kLastYear = 9999;

/// The beginning of a year from 0 to kLastYear.
double startOfYear(int year);

/// 2012-03-04; 13:45:59 with or without a fraction; both, with a T or a blank between. Nothing for
/// a text that is none.
std::optional<double> parseDate(std::string_view text);
std::optional<double> parseTime(std::string_view text);
std::optional<double> parseMoment(std::string_view text);

} // namespace scoring
