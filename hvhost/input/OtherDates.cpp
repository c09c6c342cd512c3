#include "hvhost/input/OtherDates.h"

#include <cstddef>
#include <regex>

namespace {

constexpr std::size_t kLongestDate = 40;

/// Whether the column has a value, and all its values are such dates.
bool isOfOtherDates(const HeadRecords& head, std::size_t column, std::size_t first)
{
    bool isAny = false;
    for (std::size_t i = first; i < head.records.size(); ++i) {
        if (column >= head.records[i].size() || head.records[i][column].text.empty())
            continue;
        isAny = true;
        if (!isOtherDate(head.records[i][column].text))
            return false;
    }
    return isAny;
}

} // namespace

bool isOtherDate(std::string_view text)
{
    static const std::regex other(
        R"((\d{1,2}[./]\d{1,2}[./]\d{4}|\d{1,2}-\d{1,2}-\d{4}|\d{4}[./]\d{1,2}[./]\d{1,2}))"
        R"(([ T]\d{1,2}:\d\d(:\d\d)?( [AaPp][Mm])?)?|)"
        R"(\d{4}-\d\d-\d\d[ T]\d\d:\d\d(:\d\d(\.\d+)?)?( ?UTC|Z|[+-]\d\d(:?\d\d)?))");
    return text.size() <= kLongestDate && std::regex_match(text.begin(), text.end(), other);
}

bool hasOtherDates(const HeadRecords& head, bool hasHeader)
{
    if (head.records.empty())
        return false;
    for (std::size_t column = 0; column < head.records.front().size(); ++column)
        if (isOfOtherDates(head, column, hasHeader ? 1 : 0))
            return true;
    return false;
}
