#include "report/document/PageText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>

#include <unicode/unistr.h>

#include "base/NumberText.h"
#include "base/Utf8.h"

namespace {

constexpr std::size_t kLongText = 2000;
constexpr char16_t kReplacement = 0xFFFD;
constexpr char16_t kControlPictures = 0x2400;
constexpr char16_t kDeletePicture = 0x2421;
constexpr char kDelete = 0x7F;

/// Whether a byte needs no escape in markup.
bool isPlain(char byte)
{
    constexpr std::string_view markup = "&<>\"'";
    return byte >= ' ' && byte < kDelete && markup.find(byte) == std::string_view::npos;
}

/// The visible replacement of a character that HTML does not allow.
char16_t shownAs(char16_t character)
{
    const bool isSpace = character == '\t' || character == '\n' || character == '\r';
    if (character >= 0x80 && character < 0xA0)
        return kReplacement;
    if (character < 0x20 && !isSpace)
        return static_cast<char16_t>(kControlPictures + character);
    return character == kDelete ? kDeletePicture : character;
}

/// Makes valid UTF-8: ICU replaces invalid bytes by U+FFFD.
std::string withoutControls(std::string_view text)
{
    auto units = icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    for (std::int32_t at = 0; at < units.length(); ++at)
        if (const char16_t shown = shownAs(units[at]); shown != units[at])
            units.setCharAt(at, shown);
    // Without memory ICU returns a bogus empty text.
    if (units.isBogus())
        throw std::bad_alloc();
    std::string result;
    return units.toUTF8String(result);
}

std::string_view entityOf(char byte)
{
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

/// Whether a text that is alone in its cell needs no isolation: it has no characters of another
/// writing direction.
bool isOneDirection(std::string_view text)
{
    constexpr unsigned char kFirstOther = 0x80;
    return !text.empty() && text.size() <= kLongText &&
           std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < kFirstOther; });
}

/// Isolates the writing direction; a long text gets a scrolling box.
std::string boxed(std::size_t length, const std::string& markup)
{
    if (length <= kLongText)
        return "<bdi>" + markup + "</bdi>";
    return "<span class=\"long\" tabindex=\"0\"><bdi>" + markup + "</bdi></span>";
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to)
{
    std::string result;
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = text.find(from, begin)) != std::string_view::npos;
         begin = at + from.size())
        result.append(text, begin, at - begin).append(to);
    return result.append(text, begin);
}

} // namespace

std::string escaped(std::string_view text)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        return std::string(text);
    std::string result;
    for (const char byte : withoutControls(text))
        if (const std::string_view entity = entityOf(byte); !entity.empty())
            result += entity;
        else
            result += byte;
    return result;
}

std::string isolated(std::string_view text)
{
    return boxed(text.size(), escaped(text));
}

std::string labelText(std::string_view text)
{
    return isOneDirection(text) ? escaped(text) : isolated(text);
}

std::string cellText(std::string_view text)
{
    const std::string markup = replaced(escaped(text), "\\n", "<br>");
    return isOneDirection(text) ? markup : boxed(text.size(), markup);
}

std::string shortened(std::string_view text, std::size_t limit)
{
    if (text.size() <= limit)
        return std::string(text);
    return std::string(text.substr(0, base::wholeCharacters(text, limit))) + "…";
}

std::string roundedNumber(double number, int digits)
{
    const std::string shown = base::roundedNumber(number, digits);
    return shown.starts_with('-') ? "−" + shown.substr(1) : shown;
}

std::string scriptText(std::string_view asciiJson)
{
    return replaced(asciiJson, "<", "\\u003c");
}
