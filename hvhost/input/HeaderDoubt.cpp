#include "hvhost/input/HeaderDoubt.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "datafile/CsvValue.h"
#include "hvhost/input/OtherDates.h"

namespace {

using datafile::CsvField;
using datafile::CsvKind;

constexpr int kFirstYear = 1800;
constexpr int kLastYear = 2200;
constexpr std::size_t kFewestNumbered = 3; ///< columns
constexpr std::size_t kMostQuoted = 40;    ///< bytes of a value in a sentence

/// Other forms of dates count as dates.
CsvKind judgedKind(const CsvField& field)
{
    const CsvKind kind = kindOf(field);
    return kind == CsvKind::Text && isOtherDate(field.text) ? CsvKind::Date : kind;
}

bool isTyped(CsvKind kind)
{
    return kind != CsvKind::Missing && kind != CsvKind::Text;
}

int yearOf(std::string_view text)
{
    int year = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), year);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && year >= kFirstYear && year <= kLastYear ? year : 0;
}

/// The columns of numbers, dates and times below the first record. If there is no other record,
/// those of the first record.
std::vector<std::size_t> typedColumns(const HeadRecords& head)
{
    const bool hasMore = head.records.size() > 1;
    std::vector<std::size_t> columns;
    for (std::size_t column = 0; column < head.records.front().size(); ++column) {
        CsvKind kind = hasMore ? CsvKind::Missing : judgedKind(head.records.front()[column]);
        for (std::size_t i = 1; i < head.records.size(); ++i)
            if (column < head.records[i].size())
                kind = widened(kind, judgedKind(head.records[i][column]));
        if (isTyped(kind))
            columns.push_back(column);
    }
    return columns;
}

/// Whether the names of these columns are years that ascend, as in a table with a column a year.
bool areYears(const HeadRecords& head, const std::vector<std::size_t>& columns)
{
    int last = 0;
    for (const std::size_t column : columns) {
        const int year = yearOf(head.records.front()[column].text);
        if (year <= last)
            return false;
        last = year;
    }
    if (head.records.size() == 1)
        return true;
    for (std::size_t i = 1; i < head.records.size(); ++i)
        if (columns.front() < head.records[i].size() &&
            yearOf(head.records[i][columns.front()].text) == 0)
            return columns.size() > 1;
    return false;
}

/// Whether the fields are the numbers from 0 or 1 on, as some programs name columns. An empty first
/// field is the name of their index.
bool areNumbered(const HeadRecords::Record& record)
{
    const std::size_t begin = record.front().text.empty() ? 1 : 0;
    if (record.size() < begin + kFewestNumbered)
        return false;
    int next = -1;
    for (std::size_t i = begin; i < record.size(); ++i) {
        int number = -1;
        const std::string_view text = record[i].text;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool isNext = next < 0 ? number == 0 || number == 1 : number == next;
        if (error != std::errc() || end != text.data() + text.size() || !isNext)
            return false;
        next = number + 1;
    }
    return true;
}

std::string sentence(const CsvField& field, const char* reason)
{
    return "\"" + std::string(field.text.substr(0, kMostQuoted)) + "\" " + reason;
}

/// The reason from the columns with a type.
std::string doubtOfTypes(const HeadRecords& head, const std::vector<std::size_t>& columns)
{
    const CsvField* value = nullptr;
    for (const std::size_t column : columns) {
        const CsvField& field = head.records.front()[column];
        const CsvKind kind = judgedKind(field);
        if (kind == CsvKind::Text)
            return {};
        if (kind != CsvKind::Missing && value == nullptr)
            value = &field;
    }
    if (value == nullptr || areYears(head, columns))
        return {};
    if (head.records.size() > 1)
        return sentence(*value, "is a value, like those below it");
    return sentence(*value, "is a value, and no other record follows");
}

bool recurs(const HeadRecords& head, std::size_t column)
{
    const CsvField& field = head.records.front()[column];
    return std::any_of(head.records.begin() + 1, head.records.end(), [&](const auto& record) {
        return column < record.size() && record[column].text == field.text;
    });
}

/// The reason from texts.
std::string doubtOfTexts(const HeadRecords& head)
{
    const HeadRecords::Record& first = head.records.front();
    bool allRecur = true;
    const CsvField* text = nullptr;
    for (std::size_t column = 0; column < first.size(); ++column) {
        if (first[column].text.empty())
            continue;
        text = text == nullptr ? &first[column] : text;
        const bool isTwice =
            std::any_of(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(column),
                        [&](const CsvField& field) { return field.text == first[column].text; });
        if (isTwice)
            return sentence(first[column], "is in it twice");
        allRecur = allRecur && recurs(head, column);
    }
    return allRecur && text != nullptr ? sentence(*text, "is also a value below it")
                                       : std::string();
}

} // namespace

HeaderDoubt headerDoubt(const HeadRecords& head)
{
    if (head.records.empty())
        return {};
    const std::vector<std::size_t> columns = typedColumns(head);
    if (!columns.empty()) {
        std::string reason = doubtOfTypes(head, columns);
        const bool isData = !reason.empty() && !areNumbered(head.records.front());
        return {std::move(reason), isData};
    }
    return {head.records.size() > 1 ? doubtOfTexts(head) : std::string(), false};
}
