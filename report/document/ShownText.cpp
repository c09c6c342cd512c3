#include "report/document/ShownText.h"

#include <algorithm>

#include "FormattedText.h"
#include "OutputTree.h"

std::string withDigitGroups(std::string_view number)
{
    constexpr std::size_t kUngrouped = 4;
    constexpr const char* kNarrowBlank = "\u202F";
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto* const first = std::find_if(number.begin(), number.end(), isDigit);
    const auto* const last = std::find_if_not(first, number.end(), isDigit);
    const bool hasMarks =
        std::count_if(last, number.end(), [](char c) { return c == '.' || c == ','; }) > 1 ||
        number.find_first_of("eE") != std::string_view::npos;
    const auto count = static_cast<std::size_t>(last - first);
    if (count <= kUngrouped || hasMarks)
        return std::string(number);
    std::string result(number.begin(), first);
    for (std::size_t at = 0; at < count; ++at) {
        if (at > 0 && (count - at) % 3 == 0)
            result += kNarrowBlank;
        result += first[at];
    }
    return result.append(last, number.end());
}

std::string shownText(const TnContent& content)
{
    std::string text = content.text;
    if (content.number && content.format.type == kFormatDateYearFirst)
        std::replace(text.begin(), text.end(), '/', '-');
    return text;
}

std::string shownNumber(const TnContent& content)
{
    return isDateFormat(content.format) ? shownText(content) : withDigitGroups(content.text);
}
