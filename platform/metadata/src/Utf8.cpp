#include "Utf8.h"

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

constexpr bool isSurrogate(char32_t code)
{
    return code >= 0xD800 && code <= 0xDFFF;
}

// Decodes a character in the given form; kHighestCode + 1 if the bytes are invalid.
char32_t decodeAs(const Form& form, std::string_view text)
{
    if (text.size() < form.length)
        return kHighestCode + 1;
    auto code = static_cast<char32_t>(static_cast<unsigned char>(text[0]) & ~form.mask & 0xFFU);
    for (std::size_t i = 1; i < form.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80U)
            return kHighestCode + 1;
        code = (code << 6U) | (byte & 0x3FU);
    }
    return code < form.lowest || isSurrogate(code) ? kHighestCode + 1 : code;
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
