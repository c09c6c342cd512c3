#include "JavaText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "base/Utf8.h"

namespace {
constexpr const char* ReplacementBytes = "\xEF\xBF\xBD";

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
    base::appendCharacter(utf8, 0x10000U + (surrogateBits(high) << 10U) + surrogateBits(low));
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
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto size = static_cast<std::ptrdiff_t>(utf8.size());
    for (std::ptrdiff_t place = 0; place < size;) {
        UChar32 character = 0;
        // An invalid byte, or an incomplete character, becomes one replacement character.
        U8_NEXT_OR_FFFD(bytes, place, size, character);
        if (character > 0xFFFF)
            units += U16_LEAD(character);
        units += character > 0xFFFF ? U16_TRAIL(character) : static_cast<char16_t>(character);
    }
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
