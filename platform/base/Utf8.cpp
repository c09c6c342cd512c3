#include "base/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace base {
namespace {

/// A form of non-ASCII UTF-8: the bits of its first byte, and its lowest code.
struct Form
{
    std::size_t length;
    char32_t lowest;
    unsigned char mask;
    unsigned char mark;
};

constexpr Form kForms[] = {{2, 0x80, 0xE0, 0xC0}, {3, 0x800, 0xF0, 0xE0}, {4, 0x10000, 0xF8, 0xF0}};
constexpr char32_t kHighestCode = 0x10FFFF;
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

constexpr bool isSurrogate(char32_t code)
{
    return code >= 0xD800 && code <= 0xDFFF;
}

/// Decodes a character in the given form; kHighestCode + 1 if the bytes are invalid.
char32_t decodeAs(const Form& form, std::string_view text)
{
    if (text.size() < form.length)
        return kHighestCode + 1;
    auto code = static_cast<char32_t>(static_cast<unsigned char>(text[0]) & ~form.mask & 0xFFU);
    for (std::size_t i = 1; i < form.length; ++i) {
        if (beginsCharacter(text[i]))
            return kHighestCode + 1;
        code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return code < form.lowest || isSurrogate(code) ? kHighestCode + 1 : code;
}

/// The number of ASCII bytes from `from` on, tested eight at a time, because most texts are pure
/// ASCII.
std::size_t asciiRun(std::string_view bytes, std::size_t from)
{
    std::size_t at = from;
    for (; at + sizeof(std::uint64_t) <= bytes.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if (word & kHighBits)
            break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

} // namespace

Character decodeCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) // the common case
        return {first, 1};
    for (const Form& form : kForms) {
        if ((first & form.mask) != form.mark)
            continue;
        const char32_t code = decodeAs(form, text);
        if (code <= kHighestCode)
            return {code, form.length};
    }
    return {kStrayByte + first, 1};
}

bool isUtf8(std::string_view bytes)
{
    std::size_t at = 0;
    while ((at = asciiRun(bytes, at)) < bytes.size()) {
        const Character character = decodeCharacter(bytes.substr(at));
        if (isStrayByte(character.code))
            return false;
        at += character.length;
    }
    return true;
}

std::size_t countCharacters(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

void appendCharacter(std::string& text, char32_t code)
{
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    const auto putRest = [&put, code](int shift) { put(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        putRest(0);
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        putRest(6);
        putRest(0);
    } else {
        put(0xF0 | code >> 18);
        putRest(12);
        putRest(6);
        putRest(0);
    }
}

} // namespace base
