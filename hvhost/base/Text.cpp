#include "hvhost/base/Text.h"

#include <algorithm>

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

std::string nearestHint(const std::vector<std::string>& words, const std::string& word,
                        const std::string& otherwise)
{
    const std::string_view nearest = base::nearestName(word, {words.begin(), words.end()});
    return nearest.empty() ? otherwise : "did you mean " + std::string(nearest) + "?";
}
