#include "language/TextCursor.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV::language {
namespace {

/// A form of UTF-8 characters. For some first bytes the range of the second byte is narrower. This
/// excludes overlong forms, surrogates and characters beyond U+10FFFF.
struct Utf8Form
{
    unsigned char firstLow, firstHigh;
    unsigned char secondLow, secondHigh;
    std::size_t length;
};

constexpr Utf8Form kUtf8Forms[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool isIn(char byte, unsigned char low, unsigned char high)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= low && value <= high;
}

/// Whether the text begins with a complete character of this form.
bool matches(const Utf8Form& form, std::string_view text)
{
    if (!isIn(text[0], form.firstLow, form.firstHigh) || text.size() < form.length)
        return false;
    if (form.length > 1 && !isIn(text[1], form.secondLow, form.secondHigh))
        return false;
    for (std::size_t i = 2; i < form.length; ++i)
        if (!isIn(text[i], 0x80, 0xBF))
            return false;
    return true;
}

/// The length in bytes of the first character of a non-empty text; 0 if it is invalid.
std::size_t characterLength(std::string_view text)
{
    for (const Utf8Form& form : kUtf8Forms)
        if (matches(form, text))
            return form.length;
    return 0;
}

} // namespace

std::string_view TextCursor::advance()
{
    const std::size_t length = characterLength(_rest);
    if (length == 0)
        failAt(_position, "the text holds bytes that are not UTF-8", errors::kTextEncoding);
    const std::string_view character = _rest.substr(0, length);
    _rest.remove_prefix(length);
    if (character == "\n") {
        ++_position.line;
        _position.column = 1;
    } else {
        ++_position.column;
    }
    return character;
}

void TextCursor::advance(std::size_t characters)
{
    for (; characters > 0; --characters)
        advance();
}

void appendUtf8(char32_t character, std::string& text)
{
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    const auto putTail = [&put, character](int shift) { put(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        putTail(0);
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        putTail(6);
        putTail(0);
    } else {
        put(0xF0 | character >> 18);
        putTail(12);
        putTail(6);
        putTail(0);
    }
}

void failAt(const Position& position, const std::string& text, const char* id)
{
    throw JobError(id, position.text() + ": " + text);
}

} // namespace EmbeddedHV::language
