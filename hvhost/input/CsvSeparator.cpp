#include "hvhost/input/CsvSeparator.h"

#include <cctype>
#include <string_view>

namespace {

constexpr std::string_view kTab = "tab";

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
