#pragma once

#include <cstdint>

/// A host format: width in columns, type (a code of VEXA_FormatType) and number of decimals.
struct VEXA_Format
{
    std::uint16_t width = 8;   ///< in characters, with sign and decimals
    std::uint8_t type = 5;     ///< number of the format type; 5 is a plain number
    std::uint8_t decimals = 2; ///< digits after the decimal sign
};
static_assert(sizeof(VEXA_Format) == 4, "a format is stored in four bytes");

inline bool operator==(const VEXA_Format& left, const VEXA_Format& right)
{
    return left.width == right.width && left.type == right.type && left.decimals == right.decimals;
}

/// Format types. They determine the kind of value of a variable. Dates, times and timestamps are
/// seconds; dates and timestamps count from the host's first day, 1582-10-14.
enum VEXA_FormatType : std::uint8_t
{
    kFormatString = 1,
    kFormatHexString = 2,
    kFormatComma = 3,
    kFormatDollar = 4,
    kFormatNumber = 5,
    kFormatDate = 20, ///< day first
    kFormatTime = 21,
    kFormatDateTime = 22,
    kFormatDateMonthFirst = 23,
    kFormatDateDayOfYear = 24,
    kFormatTimeWithDays = 25,
    kFormatWeekday = 26,
    kFormatMonth = 27,
    kFormatMonthAndYear = 28,
    kFormatQuarterAndYear = 29,
    kFormatWeekAndYear = 30,
    kFormatPercent = 31,
    kFormatDot = 32,
    kFormatDateWithDots = 38,
    kFormatDateYearFirst = 39,
    kFormatGeneral = 40,
    kFormatTimeMinutesFirst = 85,
    kFormatDateTimeYearFirst = 86
};

/// Whether the format shows texts. Its width is then in bytes, or twice that for hexadecimal
/// digits.
inline bool isTextFormat(const VEXA_Format& format)
{
    return format.type == kFormatString || format.type == kFormatHexString;
}
