#pragma once

#include <string>
#include <vector>

namespace EmbeddedHV {

/// The meaning of a part of a pattern for dates and times.
enum class PatternField
{
    Literal,
    Year,
    YearOfCentury, ///< two digits
    Month,
    MonthShortName,
    MonthName,
    DayOfMonth,
    DayOfYear,
    DayShortName,
    DayName,
    Hour,
    HourOfHalfDay,
    Minute,
    Second,
    Milliseconds,
    Microseconds,
    HalfDay ///< AM or PM
};

/// A part of a pattern, in the order of the text.
struct PatternPart
{
    PatternField field;
    std::string text = {}; ///< of a Literal
};
using DateTimePattern = std::vector<PatternPart>;

} // namespace EmbeddedHV
