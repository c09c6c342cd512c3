#include "datafile/CsvValue.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "base/AsciiText.h"
#include "base/CivilTime.h"

namespace datafile {
namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::size_t digitsFrom(std::string_view text, std::size_t from)
{
    std::size_t at = from;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at - from;
}

/// The number of exactly `count` digits at `from`.
std::optional<int> fixedNumber(std::string_view text, std::size_t from, std::size_t count)
{
    if (from + count > text.size())
        return std::nullopt;
    int value = 0;
    for (const char character : text.substr(from, count)) {
        if (!isDigit(character))
            return std::nullopt;
        value = value * 10 + (character - '0');
    }
    return value;
}

bool isSpecialNumber(std::string_view text)
{
    constexpr std::string_view kWords[] = {"nan", "NaN", "inf", "-inf", "Infinity", "-Infinity"};
    for (const std::string_view word : kWords)
        if (text == word)
            return true;
    return false;
}

/// A number that does not consist of digits only; it begins with `whole` digits.
CsvKind realKind(std::string_view text, std::size_t whole)
{
    // Almost every real is digits, a point and digits, which needs no conversion.
    if (text[whole] == '.' && text.size() > 1 &&
        whole + 1 + digitsFrom(text, whole + 1) == text.size())
        return CsvKind::Real;
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? CsvKind::Real : CsvKind::Text;
}

CsvKind numberKind(std::string_view text)
{
    if (!text.empty() && !isDigit(text.front()) && isSpecialNumber(text))
        return CsvKind::Real;
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    const std::size_t whole = digitsFrom(text, 0);
    // Codes such as 007 would lose their zeros as numbers.
    if (whole > 1 && text.front() == '0')
        return CsvKind::Text;
    if (whole == 0 && (text.empty() || text.front() != '.'))
        return CsvKind::Text;
    if (whole != text.size())
        return realKind(text, whole);
    // Any number with this many digits fits.
    constexpr std::size_t kDigitsThatFit = 18;
    if (whole <= kDigitsThatFit)
        return CsvKind::Integer;
    std::int64_t value = 0;
    // Include the sign: the negative range is larger by one.
    const char* digits = negative ? text.data() - 1 : text.data();
    return std::from_chars(digits, text.data() + text.size(), value).ec == std::errc()
               ? CsvKind::Integer
               : CsvKind::Real;
}

bool isDate(std::string_view text)
{
    return base::dayOfIso(text).has_value();
}

/// Empty, or a period and one to six digits.
bool isFraction(std::string_view text)
{
    return text.empty() || (text[0] == '.' && text.size() >= 2 && text.size() <= 7 &&
                            digitsFrom(text, 1) == text.size() - 1);
}

/// Hours of one digit and times without seconds are valid too, as the database reads them.
bool isTime(std::string_view text)
{
    const std::size_t hourDigits = digitsFrom(text, 0);
    if (hourDigits < 1 || hourDigits > 2 || text.size() < hourDigits + 3 || text[hourDigits] != ':')
        return false;
    const auto hour = fixedNumber(text, 0, hourDigits);
    const auto minute = fixedNumber(text, hourDigits + 1, 2);
    if (!hour || *hour > 23 || !minute || *minute > 59)
        return false;
    text.remove_prefix(hourDigits + 3);
    if (text.empty())
        return true;
    const auto second = fixedNumber(text, 1, 2);
    return text[0] == ':' && second && *second <= 59 && isFraction(text.substr(3));
}

bool isTimestamp(std::string_view text)
{
    return text.size() >= 16 && (text[10] == ' ' || text[10] == 'T') &&
           isDate(text.substr(0, 10)) && isDigit(text[12]) && isTime(text.substr(11));
}

} // namespace

CsvKind kindOf(const CsvField& field)
{
    const std::string_view text = field.text;
    if (text.empty())
        return field.quoted ? CsvKind::Text : CsvKind::Missing;
    const char first = text.front();
    // The first character decides for most texts.
    if (!isDigit(first) && first != '-' && first != '+' && first != '.' && first != ' ' &&
        first != 'n' && first != 'N' && first != 'i' && first != 'I')
        return CsvKind::Text;
    const std::string_view value = base::trimmed(text, " ");
    const CsvKind number = numberKind(value);
    if (number != CsvKind::Text)
        return number;
    if (isDate(value))
        return CsvKind::Date;
    // The database reads no blanks after the minutes.
    if (text.back() == ' ' && std::ranges::count(value, ':') == 1)
        return CsvKind::Text;
    if (isTime(value))
        return CsvKind::Time;
    return isTimestamp(value) ? CsvKind::Timestamp : CsvKind::Text;
}

CsvKind widened(CsvKind left, CsvKind right)
{
    if (left == right || right == CsvKind::Missing)
        return left;
    if (left == CsvKind::Missing)
        return right;
    const auto both = [&](CsvKind narrow, CsvKind wide) {
        return (left == narrow && right == wide) || (left == wide && right == narrow);
    };
    if (both(CsvKind::Integer, CsvKind::Real))
        return CsvKind::Real;
    return both(CsvKind::Date, CsvKind::Timestamp) ? CsvKind::Timestamp : CsvKind::Text;
}

CFField::StorageType storageOfKind(CsvKind kind)
{
    switch (kind) {
    case CsvKind::Integer:
        return CFField::Integer;
    case CsvKind::Real:
        return CFField::Real;
    case CsvKind::Date:
        return CFField::Date;
    case CsvKind::Time:
        return CFField::Time;
    case CsvKind::Timestamp:
        return CFField::Timestamp;
    default:
        return CFField::String;
    }
}

} // namespace datafile
