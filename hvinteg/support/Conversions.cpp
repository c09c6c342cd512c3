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

/// Assigns `width` bytes of a case buffer without trailing blanks.
void assignText(const OBS* value, std::size_t width, std::string& out)
{
    // Copy: the host trims in place, and a case buffer is not terminated.
    std::vector<char> buffer(width + 1, '\0');
    std::memcpy(buffer.data(), value, width);
    VEXAMBstrtrim_A(buffer.data());
    out.assign(buffer.data());
}

/// 15 significant digits reproduce every number that was written with so many.
void assignNumber(double number, std::string& out)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%-.15g", number);
    out.assign(buffer.data());
    // The C library writes the locale's separator, which may have several bytes.
    const std::string separator = std::localeconv()->decimal_point;
    if (separator == "." || separator.empty())
        return;
    const std::size_t position = out.find(separator);
    if (position != std::string::npos)
        out.replace(position, separator.size(), ".");
}

/// Reads the number at the start of a text, for String2Double and String2Integer.
template <typename Number>
Number readNumber(const std::string& text)
{
    // A stream stops at the first character that cannot continue the number and still returns the
    // value.
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
    // A hexadecimal format is wider than its value, so the value's width is the limit.
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
