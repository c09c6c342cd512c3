#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CFField.h"

#include "base/CivilTime.h"

namespace EmbeddedHV {

/// A point of local civil time: microseconds since 1970-01-01 00:00:00. Every day has 24 hours.
using Moment = std::int64_t;

inline constexpr Moment kMomentsOfDay = base::kMicrosecondsPerDay;

using base::floorDivided;
using base::floorRest;

/// Days since 1970-01-01, and the time of the day.
constexpr std::int64_t dayOf(Moment moment)
{
    return floorDivided(moment, kMomentsOfDay);
}
constexpr Moment timeOfDay(Moment moment)
{
    return floorRest(moment, kMomentsOfDay);
}

struct CivilDate
{
    int year = 1970;
    int month = 1;
    int day = 1;
};

CivilDate civilDateOf(std::int64_t day);
std::int64_t dayOf(const CivilDate& date);
int lastDayOfMonth(int year, int month);
/// 1 is Monday, 7 is Sunday.
int weekdayOf(std::int64_t day);
/// The Monday of the first week of the year by ISO 8601: the week with the fourth of January.
std::int64_t firstIsoMonday(int year);
/// Months since January of the year 0.
std::int64_t monthNumber(const CivilDate& date);
/// The date in that month, on its last day where the month is shorter.
CivilDate dateInMonth(std::int64_t monthNumber, int day);

/// Whether the year is one from 1 to 9999: what dates can be written with.
bool isWritable(Moment moment);

/// The text for a field of that storage: "2024-01-31", "10:30:00" or "2024-01-31 10:30:00", with
/// the fraction of a second if there is one.
std::string momentText(Moment moment, CFField::StorageType storage);
/// The moment of such a text, also with a T for the blank; a time alone is one of 1970-01-01.
/// Nothing for any other text.
std::optional<Moment> momentOfText(const std::string& text);

} // namespace EmbeddedHV
