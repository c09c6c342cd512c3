#include "hvhost/base/Text.h"

#include <algorithm>
#include <cstddef>

#include "base/NearestName.h"

std::string withoutLineEnds(std::string text)
{
    text.erase(text.find_last_not_of("\r\n") + 1);
    return text;
}

std::string printable(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7f'; }, ' ');
    return text;
}

std::string filled(const std::string& pattern, std::initializer_list<std::string> parts)
{
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool isPlace = pattern[at] == '^' && at + 1 < pattern.size() &&
                             pattern[at + 1] >= '1' && pattern[at + 1] <= '9';
        const auto part = isPlace ? static_cast<std::size_t>(pattern[at + 1] - '1') : parts.size();
        if (part < parts.size()) {
            text += parts.begin()[part];
            ++at;
        } else {
            text += pattern[at];
        }
    }
    return text;
}

std::string inEnglish(const std::string& key)
{
    return key;
}

std::string nearestHint(const std::vector<std::string>& words, const std::string& word,
                        const std::string& otherwise)
{
    const std::string_view nearest = base::nearestName(word, {words.begin(), words.end()});
    return nearest.empty() ? otherwise : "did you mean " + std::string(nearest) + "?";
}
