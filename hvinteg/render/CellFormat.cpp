#include "render/CellFormat.h"

#include "HostValueText.h"
#include "StorageOfFormat.h"
#include "base/AsciiText.h"
#include "base/CivilTime.h"

#include <algorithm>

#include "support/Transcoding.h"

namespace CellFormat {
namespace {

/// From the host's first day, 1582-10-14, to 1970-01-01.

std::uint8_t decimalsOf(const JsonValue& object, int byDefault)
{
    const int decimals = object["decimals"].integer(byDefault);
    return static_cast<std::uint8_t>(std::clamp(decimals, 0, 255));
}

/// Derives the type from the number's separators and symbols; later rules override earlier ones.
std::uint8_t numberTypeOf(const JsonValue& object)
{
    const auto decimal = object["decimalSeparator"].text();
    const auto thousands = object["thousandsSeparator"].text();
    std::uint8_t type = kFormatGeneral;
    if (decimal == "." || thousands == ",")
        type = kFormatComma;
    if (decimal == "," || thousands == ".")
        type = kFormatDot;
    if (object["prefix"].text() == "$")
        type = kFormatDollar;
    if (object["suffix"].text() == "%")
        type = kFormatPercent;
    return type;
}

/// The first character of a pattern determines the kind. If the pattern begins with a day, dots do.
std::uint8_t typeOfFirst(std::string_view pattern)
{
    switch (pattern.front()) {
    case 'h':
    case 'H':
        return kFormatTime;
    case 'y':
    case 'Y':
        return kFormatDateYearFirst;
    case 'M':
        return kFormatDateMonthFirst;
    case 'm':
        return kFormatTimeMinutesFirst;
    default:
        break;
    }
    if (pattern.find('.') == pattern.npos)
        return kFormatDate;
    return kFormatDateWithDots;
}

/// A date pattern with hours is a timestamp.
std::uint8_t patternTypeOf(std::string_view pattern)
{
    const std::uint8_t type = typeOfFirst(pattern);
    if (pattern.find_first_of("hH") == pattern.npos)
        return type;
    if (type == kFormatDateYearFirst)
        return kFormatDateTimeYearFirst;
    if (type == kFormatDate || type == kFormatDateWithDots)
        return kFormatDateTime;
    return type;
}

/// A weekday or month may also be given by its number.
bool isDate(double value, const VEXA_Format& format)
{
    if (format.type == kFormatWeekday)
        return !(value >= 1 && value <= 7);
    if (format.type == kFormatMonth)
        return !(value >= 1 && value <= 12);
    const CFField::StorageType storage = storageOfFormat(format);
    return storage == CFField::Date || storage == CFField::Timestamp;
}

} // namespace

VEXA_Format formatOf(const JsonValue& object)
{
    VEXA_Format format = noFormat;
    if (!object.isObject())
        return format;
    if (object["string"].flag(false)) {
        format.type = kFormatString;
        return format;
    }
    format.decimals = decimalsOf(object, generalNumber.decimals);
    const auto pattern = object["dateTimePattern"].text();
    format.type = pattern.empty() ? numberTypeOf(object) : patternTypeOf(pattern);
    return format;
}

bool isInfinite(const JsonValue& object)
{
    return object["positiveInfinity"].flag(false) || object["negativeInfinity"].flag(false);
}

double toHostDate(double value, const VEXA_Format& format, bool valueIsSeconds)
{
    if (!isDate(value, format))
        return value;
    return (valueIsSeconds ? value : value * base::kSecondsPerDay) + base::kHostEpoch;
}

std::string textOf(double value, const VEXA_Format& format)
{
    OBS unit{};
    unit.number = value;
    std::string text(std::size_t{format.width} + 1, '\0');
    ToString(&unit, format, text.data());
    // The host fills the width with blanks and writes no terminator.
    text.resize(format.width);
    return transcodeToUTF8(std::string(base::trimmed(text)).c_str(), nullptr);
}

} // namespace CellFormat
