#include "hvhost/input/CsvSeparator.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string_view>

namespace {

constexpr std::string_view kTab = "tab";
constexpr std::string_view kOthers = ";\t|";
constexpr std::size_t kMostLooked = std::size_t{64} * 1024;

/// The first line with text, up to a limit, without the text in quotes.
std::string firstLine(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string begin(kMostLooked, '\0');
    file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    begin.resize(static_cast<std::size_t>(file.gcount()));
    std::string line;
    bool quoted = false;
    for (const char character : begin) {
        const bool isEnd = character == '\n' || character == '\r';
        if (isEnd && !quoted && !line.empty())
            break;
        if (character == '"')
            quoted = !quoted;
        else if (!quoted && !isEnd)
            line += character;
    }
    return line;
}

} // namespace

char separatorOf(const std::string& word)
{
    if (word == kTab)
        return '\t';
    const bool isOne =
        word.size() == 1 && (std::ispunct(static_cast<unsigned char>(word[0])) != 0 ||
                             word[0] == '\t' || word[0] == ' ');
    return isOne && word != "\"" ? word.front() : '\0';
}

std::string separatorWord(char separator)
{
    return separator == '\t' ? std::string(kTab) : std::string(1, separator);
}

char likelySeparator(const std::string& path)
{
    const std::string line = firstLine(path);
    const auto count = [&](char character) {
        return std::count(line.begin(), line.end(), character);
    };
    if (count(',') > 0)
        return ',';
    const char most = *std::max_element(kOthers.begin(), kOthers.end(), [&](char left, char right) {
        return count(left) < count(right);
    });
    return count(most) > 0 ? most : ',';
}
