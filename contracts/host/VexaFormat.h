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
    kFormatString = 1,            ///< a text
    kFormatHexString = 2,         ///< the bytes of a text as hexadecimal digits
    kFormatComma = 3,             ///< 1,234.56
    kFormatDollar = 4,            ///< $1,234.56
    kFormatNumber = 5,            ///< 1234.56, with the decimal sign of the host's locale
    kFormatDate = 20,             ///< 24-NOV-2026
    kFormatTime = 21,             ///< 17:30:00, also longer than a day
    kFormatDateTime = 22,         ///< 24-NOV-2026 17:30:00
    kFormatDateMonthFirst = 23,   ///< 11/24/2026
    kFormatDateDayOfYear = 24,    ///< 2026328, with the day of the year
    kFormatTimeWithDays = 25,     ///< 2 17:30:00, days first
    kFormatWeekday = 26,          ///< TUESDAY
    kFormatMonth = 27,            ///< NOVEMBER
    kFormatMonthAndYear = 28,     ///< NOV 2026
    kFormatQuarterAndYear = 29,   ///< 4 Q 2026
    kFormatWeekAndYear = 30,      ///< 47 WK 2026
    kFormatPercent = 31,          ///< 12.5%
    kFormatDot = 32,              ///< 1.234,56
    kFormatDateWithDots = 38,     ///< 24.11.2026
    kFormatDateYearFirst = 39,    ///< 2026/11/24
    kFormatGeneral = 40,          ///< 1234.56, without zeros at the end of the decimals
    kFormatTimeMinutesFirst = 85, ///< 1050:00, minutes and seconds
    kFormatDateTimeYearFirst = 86 ///< 2026-11-24 17:30:00
};

/// Whether the format shows texts. Its width is then in bytes, or twice that for hexadecimal
/// digits.
inline bool isTextFormat(const VEXA_Format& format)
{
    return format.type == kFormatString || format.type == kFormatHexString;
}
