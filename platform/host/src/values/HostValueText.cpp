#include "HostValueText.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "FormattedText.h"
#include "VexaCases.h"
#include "base/AsciiText.h"
#include "data/CaseText.h"
#include "values/DateText.h"
#include "values/HexText.h"
#include "values/NumberText.h"
#include "values/TextParts.h"
#include "values/ValueText.h"

namespace {

constexpr std::string_view kMissingText = ".";
/// More decimals than a number has that is not in scientific notation.
constexpr int kAllDecimals = 40;
constexpr int kDone = 0;
constexpr int kFailed = 1;

bool isNumeric(const VEXA_Format& format)
{
    return isNumberFormat(format) || isDateFormat(format);
}

int readNumeric(std::string_view text, const VEXA_Format& format, OBS* value)
{
    value->number = kSystemMissing;
    const std::string_view plain = base::trimmed(text);
    if (plain.empty() || plain == kMissingText)
        return kDone;
    const std::optional<double> number =
        isDateFormat(format) ? readDate(plain, format) : readNumber(plain, numberStyle(format));
    value->number = number.value_or(kSystemMissing);
    return number ? kDone : kFailed;
}

} // namespace

std::string valueText(double value, const VEXA_Format& format)
{
    if (value == kSystemMissing)
        return std::string(format.width > 0 ? kMissingText : "");
    if (isDateFormat(format))
        return dateText(value, format);
    const int decimals = isNumberFormat(format) ? format.decimals : kAllDecimals;
    return numberText(value, numberStyle(format), decimals, format.width);
}

std::optional<std::size_t> fractionOf(std::string_view text, const VEXA_Format& format)
{
    if (isDateFormat(format) || text.find('E') != std::string_view::npos)
        return std::nullopt;
    const NumberStyle style = numberStyle(format);
    const std::size_t sign = text.find(style.decimalSign);
    if (sign != std::string_view::npos && text != kMissingText)
        return text.size() - sign;
    return text.ends_with(style.suffix) ? style.suffix.size() : 0;
}

int ToString(const OBS* value, const VEXA_Format& format, char* buffer)
{
    if (!buffer)
        return kFailed;
    std::memset(buffer, ' ', format.width);
    if (!value || !(isNumeric(format) || isTextFormat(format)))
        return kFailed;
    if (format.type == kFormatString) {
        std::memcpy(buffer, value->text, format.width);
    } else if (format.type == kFormatHexString) {
        const std::string digits = hexText({value->text, format.width / 2U});
        std::copy(digits.begin(), digits.end(), buffer);
    } else {
        const std::string text = valueText(value->number, format);
        std::copy(text.begin(), text.end(), buffer + format.width - text.size());
    }
    return kDone;
}

int FromString(const char* text, const VEXA_Format& format, OBS* value)
{
    if (!value || !(isNumeric(format) || isTextFormat(format)))
        return kFailed;
    const std::string_view given = text ? std::string_view(text, format.width) : "";
    if (isNumeric(format))
        return readNumeric(given, format, value);
    const bool isHex = format.type == kFormatHexString;
    const std::optional<std::string> bytes = isHex ? readHex(given) : std::string(given);
    putText(value, unitsOfWidth(isHex ? format.width / 2 : format.width), bytes.value_or(""));
    return bytes ? kDone : kFailed;
}
