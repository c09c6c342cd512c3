#include "values/DateText.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "FormattedText.h"
#include "base/CivilTime.h"
#include "base/TimestampScale.h"
#include "values/ClockText.h"
#include "values/HostCalendar.h"

namespace {

/// The possible spellings of a value, the longest first.
using Spellings = std::vector<std::string>;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::size_t kShortLength = 3;
constexpr int kWeekLength = 7;
constexpr int kQuarterLength = 3;

/// The parts of a date for its spellings.
struct DatePieces
{
    explicit DatePieces(sys_days moment)
    {
        const year_month_day date(moment);
        number = static_cast<int>(date.year());
        month = static_cast<int>(static_cast<unsigned>(date.month()));
        day = twoDigits(static_cast<unsigned>(date.day()));
        monthName = kMonthNames[static_cast<std::size_t>(month - 1)].substr(0, kShortLength);
        inYear = dayOfYear(moment);
    }

    // The year with four digits, and with two if that is unambiguous.
    Spellings years() const
    {
        const std::string digits = std::to_string(number);
        Spellings all{std::string(4 - digits.size(), '0') + digits};
        if (hasShortYear(number))
            all.push_back(all.front().substr(2));
        return all;
    }

    int number;
    int month;
    std::string day;
    std::string monthName;
    int inYear;
};

std::string threeDigits(int number)
{
    return (number < 100 ? "0" : "") + twoDigits(number);
}

/// One spelling of a date, with the given form of the year.
std::string spellDate(const DatePieces& date, const std::string& year, int type)
{
    switch (type) {
    case kFormatDateMonthFirst:
        return twoDigits(date.month) + "/" + date.day + "/" + year;
    case kFormatDateWithDots:
        return date.day + "." + twoDigits(date.month) + "." + year;
    case kFormatDateYearFirst:
        return year + "/" + twoDigits(date.month) + "/" + date.day;
    case kFormatDateDayOfYear:
        return year + threeDigits(date.inYear);
    case kFormatMonthAndYear:
        return date.monthName + " " + year;
    case kFormatQuarterAndYear:
        return std::to_string((date.month - 1) / kQuarterLength + 1) + " Q " + year;
    case kFormatWeekAndYear:
        return std::to_string((date.inYear - 1) / kWeekLength + 1) + " WK " + year;
    default:
        return date.day + "-" + date.monthName + "-" + year;
    }
}

/// Without the century the date may fit into the width.
Spellings dates(double value, int type)
{
    Spellings all;
    if (const auto day = dayOfSeconds(value)) {
        const DatePieces pieces(*day);
        for (const std::string& year : pieces.years())
            all.push_back(spellDate(pieces, year, type));
    }
    return all;
}

std::string spellDateTimeDay(sys_days day, int type)
{
    const DatePieces date(day);
    const std::string year = date.years().front();
    return type == kFormatDateTimeYearFirst ? year + "-" + twoDigits(date.month) + "-" + date.day
                                            : spellDate(date, year, kFormatDate);
}

/// Rounds microseconds to a number of decimals of a second.
std::int64_t roundedMoment(std::int64_t microseconds, int decimals)
{
    std::int64_t unit = 1;
    for (int dropped = decimals; dropped < kMostClockDecimals; ++dropped)
        unit *= 10;
    const std::int64_t raised = microseconds + unit / 2;
    return raised - base::floorRest(raised, unit);
}

Spellings datesWithTime(double value, int decimals, int type)
{
    Spellings all;
    if (!dayOfSeconds(value))
        return all;
    const std::int64_t moment = base::timestampOfRow(value - base::kHostEpoch);
    for (int kept = decimals; kept >= -1; --kept) {
        // Rounding may reach the next day, so derive the day from the rounded value.
        const std::int64_t shown = roundedMoment(moment, std::max(kept, 0));
        const std::int64_t ofDay = base::floorRest(shown, base::kMicrosecondsPerDay);
        const auto day = dayOfSeconds(base::hostSeconds(shown - ofDay));
        if (!day)
            return {};
        const Clock clock(base::rowSeconds(ofDay), std::max(kept, 0));
        all.push_back(spellDateTimeDay(*day, type) + " " +
                      (kept < 0 ? hoursAndMinutesText(clock) : hoursText(clock)));
    }
    return all;
}

std::string spellDuration(Clock clock, int type, bool withSeconds)
{
    constexpr int kMinuteLength = 60;
    constexpr auto kPerDay = static_cast<long long>(base::kSecondsPerDay);
    // Without seconds, an amount below a minute is zero and has no sign.
    const bool isNegative = clock.isNegative && (withSeconds || clock.seconds >= kMinuteLength);
    std::string text = isNegative ? "-" : "";
    if (type == kFormatTimeMinutesFirst)
        return text + twoDigits(clock.seconds / kMinuteLength) + ":" +
               twoDigits(clock.seconds % kMinuteLength) + clock.fraction;
    if (type == kFormatTimeWithDays) {
        text += std::to_string(clock.seconds / kPerDay) + " ";
        clock.seconds %= kPerDay;
    }
    return text + (withSeconds ? hoursText(clock) : hoursAndMinutesText(clock));
}

/// Omits decimals first, then seconds.
Spellings durations(double value, int decimals, int type)
{
    Spellings all;
    if (!(std::fabs(value) < kMostClockSeconds))
        return all;
    for (int kept = decimals; kept >= 0; --kept)
        all.push_back(spellDuration(Clock(value, kept), type, true));
    if (type != kFormatTimeMinutesFirst)
        all.push_back(spellDuration(Clock(value, 0), type, false));
    return all;
}

// A small number is a month or weekday; any other value is a date.
Spellings names(double value, int type)
{
    const bool isMonth = type == kFormatMonth;
    double number = std::floor(value);
    if (!(number >= 1 && number <= (isMonth ? kMonths : kWeekdays))) {
        const auto day = dayOfSeconds(value);
        if (!day)
            return {};
        number = isMonth ? DatePieces(*day).month : std::chrono::weekday(*day).c_encoding() + 1;
    }
    const auto index = static_cast<std::size_t>(number) - 1;
    const std::string name(isMonth ? kMonthNames[index] : kWeekdayNames[index]);
    return {name, name.substr(0, kShortLength)};
}

/// Empty for an invalid value.
Spellings spellings(double value, const VEXA_Format& format)
{
    const int decimals = std::min<int>(format.decimals, kMostClockDecimals);
    switch (format.type) {
    case kFormatTime:
    case kFormatTimeWithDays:
    case kFormatTimeMinutesFirst:
        return durations(value, decimals, format.type);
    case kFormatDateTime:
    case kFormatDateTimeYearFirst:
        return datesWithTime(value, decimals, format.type);
    case kFormatWeekday:
    case kFormatMonth:
        return names(value, format.type);
    default:
        return dates(value, format.type);
    }
}

} // namespace

bool isDateFormat(const VEXA_Format& format)
{
    return (format.type >= kFormatDate && format.type <= kFormatWeekAndYear) ||
           format.type == kFormatDateWithDots || format.type == kFormatDateYearFirst ||
           format.type == kFormatTimeMinutesFirst || format.type == kFormatDateTimeYearFirst;
}

std::string dateText(double value, const VEXA_Format& format)
{
    for (std::string& text : spellings(value, format))
        if (text.size() <= format.width)
            return std::move(text);
    return std::string(format.width, '*');
}
