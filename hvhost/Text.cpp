#include "Text.h"

#include <algorithm>

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
