#include "values/HexText.h"

#include <charconv>

namespace {

constexpr int kBase = 16;
constexpr std::string_view kDigits = "0123456789ABCDEF";

} // namespace

std::string hexText(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += kDigits[code / kBase];
        text += kDigits[code % kBase];
    }
    return text;
}

std::optional<std::string> readHex(std::string_view text)
{
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    std::string bytes;
    for (; text.size() >= 2; text.remove_prefix(2)) {
        unsigned char code = 0;
        if (std::from_chars(text.data(), text.data() + 2, code, kBase).ptr != text.data() + 2)
            return std::nullopt;
        bytes += static_cast<char>(code);
    }
    return text.empty() ? std::optional(bytes) : std::nullopt;
}
