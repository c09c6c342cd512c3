#include "JavaText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace {
constexpr char32_t Replacement = 0xFFFD;
constexpr const char* ReplacementBytes = "\xEF\xBF\xBD";

/// Valid UTF-8 sequences by lead byte. The limits of the second byte exclude overlong forms,
/// surrogates and codes above the last character.
struct Sequence
{
    std::uint8_t firstLead, lastLead;
    std::uint8_t firstSecond, lastSecond;
    std::size_t length;
    std::uint8_t leadBits;
};

constexpr std::array<Sequence, 9> Sequences = {{{0x00, 0x7F, 0x00, 0x00, 1, 0x7F},
                                                {0xC2, 0xDF, 0x80, 0xBF, 2, 0x1F},
                                                {0xE0, 0xE0, 0xA0, 0xBF, 3, 0x0F},
                                                {0xE1, 0xEC, 0x80, 0xBF, 3, 0x0F},
                                                {0xED, 0xED, 0x80, 0x9F, 3, 0x0F},
                                                {0xEE, 0xEF, 0x80, 0xBF, 3, 0x0F},
                                                {0xF0, 0xF0, 0x90, 0xBF, 4, 0x07},
                                                {0xF1, 0xF3, 0x80, 0xBF, 4, 0x07},
                                                {0xF4, 0xF4, 0x80, 0x8F, 4, 0x07}}};

std::uint8_t byteAt(const std::string& text, std::size_t position)
{
    return static_cast<std::uint8_t>(text[position]);
}

/// Decodes a character and moves `position` behind it, or behind the longest valid prefix.
char32_t decode(const std::string& text, std::size_t& position)
{
    const std::uint8_t lead = byteAt(text, position++);
    const auto* row = std::find_if(Sequences.begin(), Sequences.end(), [lead](const Sequence& s) {
        return lead >= s.firstLead && lead <= s.lastLead;
    });
    if (row == Sequences.end())
        return Replacement;
    char32_t character = lead & row->leadBits;
    for (std::size_t index = 1; index < row->length; ++index) {
        const std::uint8_t first = index == 1 ? row->firstSecond : 0x80;
        const std::uint8_t last = index == 1 ? row->lastSecond : 0xBF;
        if (position == text.size() || byteAt(text, position) < first ||
            byteAt(text, position) > last)
            return Replacement;
        character = (character << 6U) | (byteAt(text, position++) & 0x3FU);
    }
    return character;
}

void append(std::u16string& units, char32_t character)
{
    if (character < 0x10000) {
        units += static_cast<char16_t>(character);
        return;
    }
    character -= 0x10000;
    units += static_cast<char16_t>(0xD800 + (character >> 10U));
    units += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
}

/// Whether the three bytes are a surrogate of the half that `first` selects.
bool isSurrogate(const char* bytes, unsigned first)
{
    return static_cast<std::uint8_t>(bytes[0]) == 0xED &&
           (static_cast<std::uint8_t>(bytes[1]) & 0xF0U) == first;
}

unsigned surrogateBits(const char* bytes)
{
    return (static_cast<unsigned>(bytes[1]) & 0x0FU) << 6U |
           (static_cast<unsigned>(bytes[2]) & 0x3FU);
}

void appendPair(std::string& utf8, const char* high, const char* low)
{
    const unsigned character = 0x10000U + (surrogateBits(high) << 10U) + surrogateBits(low);
    utf8 += static_cast<char>(0xF0U | character >> 18U);
    utf8 += static_cast<char>(0x80U | (character >> 12U & 0x3FU));
    utf8 += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
    utf8 += static_cast<char>(0x80U | (character & 0x3FU));
}

/// Appends the special form at `bytes`, or one byte. Returns the number of bytes read.
std::size_t appendOne(std::string& utf8, const char* bytes)
{
    constexpr unsigned High = 0xA0;
    constexpr unsigned Low = 0xB0;
    if (static_cast<std::uint8_t>(bytes[0]) == 0xC0) {
        utf8 += '\0';
        return 2;
    }
    if (isSurrogate(bytes, High) && isSurrogate(bytes + 3, Low)) {
        appendPair(utf8, bytes, bytes + 3);
        return 6;
    }
    if (isSurrogate(bytes, High) || isSurrogate(bytes, Low)) {
        utf8 += ReplacementBytes;
        return 3;
    }
    utf8 += bytes[0];
    return 1;
}
} // namespace

bool isPlainText(const std::string& utf8)
{
    return std::all_of(utf8.begin(), utf8.end(),
                       [](char c) { return c != 0 && static_cast<std::uint8_t>(c) <= 0x7F; });
}

std::u16string utf16FromUtf8(const std::string& utf8)
{
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();)
        append(units, decode(utf8, position));
    return units;
}

std::string utf8FromJava(const char* bytes)
{
    // Only sequences with these lead bytes differ.
    if (std::strpbrk(bytes, "\xC0\xED") == nullptr)
        return bytes;
    std::string utf8;
    while (*bytes != '\0')
        bytes += appendOne(utf8, bytes);
    return utf8;
}
