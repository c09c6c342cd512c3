#include "DataModelText.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace {

constexpr std::size_t kSequenceLength = 7; // _xHHHH_
constexpr unsigned kUnderscore = 0x5F;
constexpr std::string_view kNonCharacterFFFE = "\xEF\xBF\xBE";
constexpr std::string_view kNonCharacterFFFF = "\xEF\xBF\xBF";

// Whether XML text cannot carry the character. Tabs and line feeds pass as they are.
bool needsEscape(unsigned code)
{
    return (code < 0x20 && code != '\t' && code != '\n') || code == 0xFFFE || code == 0xFFFF;
}

// The code of an escape sequence that the text begins with, its closing underscore not looked at;
// -1 if there is none.
int openSequenceCode(std::string_view text)
{
    constexpr std::size_t kDigitsBegin = 2;
    constexpr std::size_t kDigitsEnd = 6;
    if (text.size() < kDigitsEnd || !text.starts_with("_x"))
        return -1;
    unsigned code = 0;
    const char* last = text.data() + kDigitsEnd;
    const auto [end, error] = std::from_chars(text.data() + kDigitsBegin, last, code, 16);
    if (error != std::errc() || end != last)
        return -1;
    return needsEscape(code) || code == kUnderscore ? static_cast<int>(code) : -1;
}

int sequenceCode(std::string_view text)
{
    const bool closed = text.size() >= kSequenceLength && text[kSequenceLength - 1] == '_';
    return closed ? openSequenceCode(text) : -1;
}

std::string sequenceFor(unsigned code)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string sequence = "_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        sequence += kDigits[(code >> static_cast<unsigned>(shift)) & 0xFU];
    return sequence + '_';
}

// Appends a character that needs an escape, as UTF-8.
void appendCode(std::string& text, unsigned code)
{
    if (code == 0xFFFE)
        text += kNonCharacterFFFE;
    else if (code == 0xFFFF)
        text += kNonCharacterFFFF;
    else
        text += static_cast<char>(code);
}

} // namespace

std::string escapeText(const std::string& text)
{
    const std::string_view whole = text;
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const std::string_view rest = whole.substr(at);
        const auto code = static_cast<unsigned char>(rest[0]);
        // The underscore that closes a sequence may come from an escape that follows, so the open
        // form counts.
        if (needsEscape(code) || openSequenceCode(rest) >= 0)
            escaped += sequenceFor(code);
        else if (rest.starts_with(kNonCharacterFFFE) || rest.starts_with(kNonCharacterFFFF)) {
            escaped += sequenceFor(rest.starts_with(kNonCharacterFFFE) ? 0xFFFE : 0xFFFF);
            at += kNonCharacterFFFE.size() - 1;
        } else
            escaped += rest[0];
    }
    return escaped;
}

std::string unescapeText(const std::string& text)
{
    const std::string_view whole = text;
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < whole.size();) {
        const int code = sequenceCode(whole.substr(at));
        if (code < 0) {
            plain += whole[at++];
            continue;
        }
        appendCode(plain, static_cast<unsigned>(code));
        at += kSequenceLength;
    }
    return plain;
}
