#include <chrono>

#include "base/CivilTime.h"
#include "values/ClockText.h"
#include "values/DateText.h"
#include "values/HostCalendar.h"

namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kDelimiters = "-/., \t";
constexpr int kDaysPerWeek = 7;
constexpr int kMonthsPerQuarter = 3;
constexpr int kQuarters = 4;
constexpr int kWeeks = 53;

std::optional<int> readYear(TextParts& parts, std::size_t mostDigits = 4)
{
    const std::size_t before = parts.rest().size();
    const std::optional<int> number = parts.number(mostDigits);
    const bool isShort = before - parts.rest().size() <= 2;
    return number && isShort ? std::optional(yearOfShort(*number)) : number;
}

std::optional<int> readMonth(TextParts& parts)
{
    if (const std::string name = parts.word(); !name.empty())
        return monthOfName(name);
    return parts.number(2);
}

std::optional<sys_days> dayOf(std::optional<int> inYear, std::optional<int> inMonth,
                              std::optional<int> inDay)
{
    if (!inYear || !inMonth || !inDay || *inYear < 1)
        return std::nullopt;
    const year_month_day date{year{*inYear}, month{static_cast<unsigned>(*inMonth)},
                              day{static_cast<unsigned>(*inDay)}};
    return date.ok() ? std::optional(sys_days(date)) : std::nullopt;
}

// Reads the parts of a date in the order of the letters d, m and y.
std::optional<sys_days> readDay(TextParts& parts, std::string_view order)
{
    std::optional<int> inYear;
    std::optional<int> inMonth;
    std::optional<int> inDay;
    for (const char piece : order) {
        if (piece != order.front())
            parts.skip(kDelimiters);
        if (piece == 'y')
            inYear = readYear(parts);
        else if (piece == 'm')
            inMonth = readMonth(parts);
        else
            inDay = parts.number(2);
    }
    return dayOf(inYear, inMonth, inDay);
}

std::string_view pieceOrder(int type)
{
    switch (type) {
    case kFormatDateMonthFirst:
        return "mdy";
    case kFormatDateYearFirst:
    case kFormatDateTimeYearFirst:
        return "ymd";
    case kFormatMonthAndYear:
        return "my";
    default:
        return "dmy";
    }
}

// Reads a year and a day; the last three digits are the day of the year.
std::optional<sys_days> readDayOfYear(TextParts& parts)
{
    constexpr std::size_t kDayDigits = 3;
    const std::size_t digits = parts.rest().size();
    if (digits <= kDayDigits)
        return std::nullopt;
    const std::optional<int> inYear = readYear(parts, digits - kDayDigits);
    const std::optional<int> inDay = parts.number(kDayDigits);
    if (!inYear || !inDay || !year{*inYear}.ok() || *inDay < 1)
        return std::nullopt;
    const sys_days found = firstOfYear(*inYear) + days{*inDay - 1};
    return year_month_day(found).year() == year{*inYear} ? std::optional(found) : std::nullopt;
}

// Reads the number of a quarter or week, its word and a year. Returns the first day.
std::optional<sys_days> readPartOfYear(TextParts& parts, bool isQuarter)
{
    const std::optional<int> part = parts.number(2);
    parts.skip(kDelimiters);
    const bool isNamed = parts.word() == (isQuarter ? "Q" : "WK");
    parts.skip(kDelimiters);
    const std::optional<int> inYear = readYear(parts);
    if (!part || !isNamed || !inYear || *part < 1 || *part > (isQuarter ? kQuarters : kWeeks))
        return std::nullopt;
    if (isQuarter)
        return dayOf(inYear, (*part - 1) * kMonthsPerQuarter + 1, 1);
    return firstOfYear(*inYear) + days{(*part - 1) * kDaysPerWeek};
}

std::optional<sys_days> readWholeDay(TextParts& parts, int type)
{
    switch (type) {
    case kFormatDateDayOfYear:
        return readDayOfYear(parts);
    case kFormatQuarterAndYear:
    case kFormatWeekAndYear:
        return readPartOfYear(parts, type == kFormatQuarterAndYear);
    case kFormatMonthAndYear: {
        const std::optional<int> inMonth = readMonth(parts);
        parts.skip(kDelimiters);
        return dayOf(readYear(parts), inMonth, 1);
    }
    default:
        return readDay(parts, pieceOrder(type));
    }
}

std::optional<double> readDateTime(TextParts& parts, int type)
{
    const std::optional<sys_days> found = readDay(parts, pieceOrder(type));
    if (!found)
        return std::nullopt;
    parts.skip(kBlanks);
    if (parts.atEnd())
        return secondsOfDay(*found);
    const std::optional<double> time = readHours(parts);
    if (!time || *time >= base::kSecondsPerDay)
        return std::nullopt;
    return secondsOfDay(*found) + *time;
}

std::optional<double> readDuration(TextParts& parts, int type)
{
    const bool isNegative = parts.take("-");
    double whole = 0;
    if (type == kFormatTimeWithDays) {
        const std::optional<double> count = parts.amount();
        if (!count || !parts.take(kBlanks))
            return std::nullopt;
        whole = *count * base::kSecondsPerDay;
        parts.skip(kBlanks);
    }
    const std::optional<double> time =
        type == kFormatTimeMinutesFirst ? readMinutes(parts) : readHours(parts);
    if (!time)
        return std::nullopt;
    return isNegative ? -(whole + *time) : whole + *time;
}

std::optional<double> readParts(TextParts& parts, int type)
{
    switch (type) {
    case kFormatTime:
    case kFormatTimeWithDays:
    case kFormatTimeMinutesFirst:
        return readDuration(parts, type);
    case kFormatDateTime:
    case kFormatDateTimeYearFirst:
        return readDateTime(parts, type);
    case kFormatMonth:
        return monthOfName(parts.word());
    case kFormatWeekday:
        return weekdayOfName(parts.word());
    default:
        const std::optional<sys_days> found = readWholeDay(parts, type);
        return found ? std::optional(secondsOfDay(*found)) : std::nullopt;
    }
}

} // namespace

std::optional<double> readDate(std::string_view text, const VEXA_Format& format)
{
    TextParts parts(text);
    const std::optional<double> value = readParts(parts, format.type);
    // Remaining text means that the text is not such a date.
    return parts.atEnd() ? value : std::nullopt;
}
