#include "support/Conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <locale>
#include <sstream>
#include <vector>

#include "MultiByte.h"
#include "VexaVariable.h"

namespace {

/// `width` bytes of a case buffer, without the blanks that fill it up.
void assignText(const OBS* value, std::size_t width, std::string& out)
{
    // A copy, since the host trims in place and a case buffer has no end mark.
    std::vector<char> buffer(width + 1, '\0');
    std::memcpy(buffer.data(), value, width);
    VEXAMBstrtrim_A(buffer.data());
    out.assign(buffer.data());
}

/// Up to 15 significant digits: what was written with so many comes out as it was written.
void assignNumber(double number, std::string& out)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%-.15g", number);
    out.assign(buffer.data());
    // The C library writes the separator of the host's locale, which may be more than a byte.
    const std::string separator = std::localeconv()->decimal_point;
    if (separator == "." || separator.empty())
        return;
    const std::size_t position = out.find(separator);
    if (position != std::string::npos)
        out.replace(position, separator.size(), ".");
}

/// The number at the start of a text, as String2Double and String2Integer tell.
template <typename Number>
Number readNumber(const std::string& text)
{
    // A stream reads as far as it can and no further, which no other conversion does in all cases.
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Number number = 0;
    stream >> number;
    return number;
}

} // namespace

void ConvertObsValToStr(const OBS* value, const VEXA_Variable& variable, std::string& out)
{
    out.assign(1, '\0');
    if (value == nullptr)
        return;
    if (variable.GetType() == 0) {
        assignNumber(value->number, out);
        return;
    }
    // A hexadecimal format is wider than the value that it shows, so the value's own width bounds.
    const int shown = std::min<int>(variable.GetFormatEx().width, variable.GetType());
    assignText(value, static_cast<std::size_t>(std::max(shown, 0)), out);
}

void ConvertObsValToStr(const OBS* value, int width, std::string& out)
{
    out.assign(1, '\0');
    if (value == nullptr || width < 0)
        return;
    if (width == 0)
        assignNumber(value->number, out);
    else
        assignText(value, static_cast<std::size_t>(width), out);
}

std::string Double2String(double value)
{
    constexpr int kSignificantDigits = 6;
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, kSignificantDigits);
    return {buffer.data(), written.ptr};
}

std::string Integer2String(int value)
{
    return std::to_string(value);
}

double String2Double(const std::string& text)
{
    return readNumber<double>(text);
}

int String2Integer(const std::string& text)
{
    return readNumber<int>(text);
}
