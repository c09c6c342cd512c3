#include "hvhost/base/Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row.back();
}

} // namespace

bool beginsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

std::size_t countCharacters(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

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

std::string nearestWord(const std::vector<std::string>& words, const std::string& word)
{
    constexpr std::size_t kTellingLength = 3;
    std::string nearest;
    std::size_t best = word.size() / 2 + 1;
    for (const std::string& candidate : words) {
        // A user who typed the beginning of a word meant that word, however long it is.
        if (word.size() >= kTellingLength && candidate.starts_with(word))
            return candidate;
        const std::size_t distance = editDistance(word, candidate);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}
