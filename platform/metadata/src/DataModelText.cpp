#include "DataModelText.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>

#include "base/Utf8.h"

namespace {

constexpr std::size_t kSequenceLength = 7; // _xHHHH_
constexpr std::string_view kSequenceBegin = "_x";
constexpr unsigned kUnderscore = 0x5F;

// A carriage return is allowed, but an XML reader changes it to a line feed.
bool needsEscape(char32_t code)
{
    return !isXmlCharacter(code) || code == '\r';
}

// The code of the escape sequence at the start of the text, without its closing underscore, or -1.
int openSequenceCode(std::string_view text)
{
    constexpr std::size_t kDigitsBegin = 2;
    constexpr std::size_t kDigitsEnd = 6;
    if (text.size() < kDigitsEnd || !text.starts_with(kSequenceBegin))
        return -1;
    unsigned code = 0;
    const char* last = text.data() + kDigitsEnd;
    const auto [end, error] = std::from_chars(text.data() + kDigitsBegin, last, code, 16);
    if (error != std::errc() || end != last)
        return -1;
    const bool known = code < 0x20 || code == 0xFFFE || code == 0xFFFF || base::isStrayByte(code);
    return (known && needsEscape(code)) || code == kUnderscore ? static_cast<int>(code) : -1;
}

int sequenceCode(std::string_view text)
{
    const bool closed = text.size() >= kSequenceLength && text[kSequenceLength - 1] == '_';
    return closed ? openSequenceCode(text) : -1;
}

std::string sequenceFor(char32_t code)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string sequence = "_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        sequence += kDigits[(code >> static_cast<unsigned>(shift)) & 0xFU];
    return sequence + '_';
}

// Appends the UTF-8 form of an escaped character, or the byte that it represents.
void appendCode(std::string& text, char32_t code)
{
    if (code == 0xFFFE)
        text += "\xEF\xBF\xBE";
    else if (code == 0xFFFF)
        text += "\xEF\xBF\xBF";
    else
        text += static_cast<char>(base::isStrayByte(code) ? code - base::kStrayByte : code);
}

// Whether escaping leaves the text unchanged, as for most texts: printable ASCII without the start
// of an escape sequence.
bool isPlain(std::string_view text)
{
    const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
    return std::all_of(text.begin(), text.end(), isPrintable) &&
           text.find(kSequenceBegin) == std::string_view::npos;
}

} // namespace

bool isXmlCharacter(char32_t code)
{
    if (code < 0x20)
        return code == '\t' || code == '\n' || code == '\r';
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return !surrogate && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

std::string escapeText(const std::string& text)
{
    const std::string_view whole = text;
    if (isPlain(whole))
        return text;
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < whole.size();) {
        const std::string_view rest = whole.substr(at);
        const base::Character character = base::decodeCharacter(rest);
        // The closing underscore may come from a following escape, so test without it.
        if (needsEscape(character.code) || openSequenceCode(rest) >= 0)
            escaped += sequenceFor(character.code);
        else
            escaped += rest.substr(0, character.length);
        at += character.length;
    }
    return escaped;
}

std::string unescapeText(const std::string& text)
{
    const std::string_view whole = text;
    if (whole.find(kSequenceBegin) == std::string_view::npos)
        return text;
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < whole.size();) {
        const int code = sequenceCode(whole.substr(at));
        if (code < 0) {
            plain += whole[at++];
            continue;
        }
        appendCode(plain, static_cast<char32_t>(code));
        at += kSequenceLength;
    }
    return plain;
}
