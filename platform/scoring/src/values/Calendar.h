#pragma once

#include <optional>
#include <string_view>

namespace scoring {

/// Dates and moments are seconds since 1582-10-14 in the Gregorian calendar.

inline constexpr int kLastYear = 9999;

/// The start of a year from 0 to kLastYear.
double startOfYear(int year);

/// A double since 1582-10-14 represents about two microseconds of today. Each of them can reach the
/// model as this double or as a neighbour of it, depending on the scales on the way. This chooses
/// one of them, so that equal moments are equal numbers: all multiples of 10 microseconds from 1900
/// to 3700, and every moment that comes the way of rows.
double canonicalMoment(double moment);
/// The seconds from a whole second, `origin`, to a moment, rounded only once. So a millisecond has
/// the number that a model writes for it.
double secondsSince(double origin, double moment);

/// Parses a date such as 2012-03-04. Empty if the text is invalid.
std::optional<double> parseDate(std::string_view text);
/// Parses a time such as 13:45:59, with or without a fraction. Empty if the text is invalid.
std::optional<double> parseTime(std::string_view text);
/// Parses a date and a time, separated by a T or a blank. Empty if the text is invalid.
std::optional<double> parseMoment(std::string_view text);

} // namespace scoring
