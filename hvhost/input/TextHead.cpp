#include "hvhost/input/TextHead.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <string_view>

#include "base/AsciiText.h"
#include "datafile/CsvValue.h"
#include "hvhost/input/CsvSeparator.h"
#include "hvhost/input/HeaderDoubt.h"
#include "hvhost/input/OtherDates.h"

namespace {

using datafile::CsvField;
using datafile::CsvKind;

constexpr std::string_view kSeparators = ",;\t|";
constexpr std::size_t kMostLooked = std::size_t{64} * 1024;
constexpr std::size_t kMostRecords = 100;
constexpr std::size_t kMostTitleLines = 20;
constexpr std::string_view kMarkOfUtf8 = "\xEF\xBB\xBF";

/// The dialects in the order of preference.
constexpr std::array<TextDialect, 3> kQuotings{{{.quote = '"', .escape = '"'},
                                                {.quote = '\'', .escape = '\''},
                                                {.quote = '"', .escape = '\\'}}};

struct Beginning
{
    std::string text;
    bool isWhole = false;
};

/// UTF-16 as ASCII, with an x for each other character.
std::string asciiOfUtf16(std::string_view bytes)
{
    const std::size_t low = bytes.front() == '\xff' ? 0 : 1;
    std::string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const char character = bytes[i + low];
        text += bytes[i + 1 - low] == '\0' && base::isAscii(character) ? character : 'x';
    }
    return text;
}

Beginning beginningOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    Beginning begin{std::string(kMostLooked, '\0'), false};
    file.read(begin.text.data(), static_cast<std::streamsize>(begin.text.size()));
    begin.isWhole = file.eof();
    begin.text.resize(static_cast<std::size_t>(file.gcount()));
    if (begin.text.starts_with("\xff\xfe") || begin.text.starts_with("\xfe\xff"))
        begin.text = asciiOfUtf16(begin.text);
    else if (begin.text.starts_with(kMarkOfUtf8))
        begin.text.erase(0, kMarkOfUtf8.size());
    return begin;
}

std::string_view withoutLines(std::string_view text, std::uint64_t count)
{
    for (; count > 0 && !text.empty(); --count)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    return text;
}

std::uint64_t blankLines(std::string_view text)
{
    const std::string_view blank =
        text.substr(0, std::min(text.find_first_not_of("\r\n"), text.size()));
    const auto count = std::count(blank.begin(), blank.end(), '\n');
    return static_cast<std::uint64_t>(count);
}

std::size_t countIn(const HeadRecords::Record& record, char character)
{
    std::size_t count = 0;
    for (const CsvField& field : record)
        if (!field.quoted)
            count += static_cast<std::size_t>(
                std::count(field.text.begin(), field.text.end(), character));
    return count;
}

bool isBetweenDigits(std::string_view text, std::size_t at)
{
    return at > 0 && at + 1 < text.size() && base::isDigit(text[at - 1]) &&
           base::isDigit(text[at + 1]);
}

/// Whether each comma in the records below the first one is between two digits.
bool areDecimalCommas(const HeadRecords& head)
{
    bool isAny = false;
    for (std::size_t i = 1; i < head.records.size(); ++i)
        for (const CsvField& field : head.records[i])
            for (std::size_t at = field.quoted ? std::string_view::npos : field.text.find(',');
                 at != std::string_view::npos; at = field.text.find(',', at + 1)) {
                isAny = true;
                if (!isBetweenDigits(field.text, at))
                    return false;
            }
    return isAny;
}

/// Whether a column has a number, a date or a time in all records below the first one.
bool hasTypedColumn(const HeadRecords& head)
{
    for (std::size_t column = 0; column < head.records.front().size(); ++column) {
        CsvKind kind = CsvKind::Missing;
        for (std::size_t i = 1; i < head.records.size(); ++i)
            kind = widened(kind, kindOf(head.records[i][column]));
        if (kind != CsvKind::Missing && kind != CsvKind::Text)
            return true;
    }
    return false;
}

/// Tries dialects on the beginning of a file.
class HeadJudge
{
public:
    HeadJudge(const std::string& path, const GivenText& given) : _given(given)
    {
        _begin = beginningOf(path);
        _text = withoutLines(_begin.text, given.skipped);
    }

    TextHead judge()
    {
        if (!findRegular())
            useFirstLine();
        const HeadRecords head = split(_head.dialect);
        judgeFirstRecord(head);
        _head.hasOtherDates = hasOtherDates(head, _head.hasHeader);
        _head.blankLines = blankLines(withoutLines(_text, _head.skipped));
        return _head;
    }

private:
    void judgeFirstRecord(const HeadRecords& head)
    {
        _head.hasHeader = _given.hasHeader.value_or(true);
        if (_given.hasHeader)
            return;
        const HeaderDoubt doubt = headerDoubt(head);
        if (doubt.isData) {
            _head.hasHeader = false;
            _head.doubts.push_back(
                {"the first record is read as data, not as names: " + doubt.reason,
                 "--header reads it as names, and --no-header as data"});
        } else if (!doubt.reason.empty()) {
            _head.doubts.push_back({"the first record may not be names: " + doubt.reason,
                                    "--no-header reads it as a record, and --header as names"});
        }
    }

    HeadRecords split(const TextDialect& dialect) const
    {
        return headRecords(withoutLines(_text, _head.skipped), dialect, kMostRecords,
                           _begin.isWhole);
    }

    std::string_view candidates() const
    {
        return _given.separator == '\0' ? kSeparators : std::string_view(&_given.separator, 1);
    }

    /// A file without single quotes around values, or without backslashes before quotes, does not
    /// show that it is written so.
    bool isNeeded(const TextDialect& dialect, const HeadRecords& head) const
    {
        if (dialect.quote == '\'')
            return head.quotesValues() && _text.find('"') == std::string_view::npos;
        return dialect.escape == dialect.quote || _text.find("\\\"") != std::string_view::npos;
    }

    /// Finds a separator that splits all records in the same way.
    bool takeSeparator(TextDialect dialect)
    {
        std::string regular;
        std::optional<HeadRecords> best;
        for (const char separator : candidates()) {
            dialect.separator = separator;
            HeadRecords head = split(dialect);
            if (!head.isRegular() || !isNeeded(dialect, head))
                continue;
            if (best && regular.front() == ',' && areDecimalCommas(head))
                best.reset();
            regular += separator;
            const bool isBetter =
                !best || head.records.front().size() > best->records.front().size();
            if (isBetter) {
                _head.dialect = dialect;
                best = std::move(head);
            }
        }
        return best.has_value();
    }

    bool findRegular()
    {
        const bool mayComment = _given.comment == '\0' && _text.find('#') != std::string_view::npos;
        const char comment = mayComment ? '#' : '\0';
        for (TextDialect dialect : kQuotings) {
            dialect.comment = _given.comment;
            if (takeSeparator(dialect))
                return preferSingleQuotes(), noteQuotes(), true;
            if (comment == '\0')
                continue;
            dialect.comment = comment;
            if (takeSeparator(dialect))
                return noteComment(), noteQuotes(), true;
        }
        return findBelowTitle();
    }

    /// A file with single quotes around values is regular with double quotes as well, unless a
    /// separator is in quotes.
    void preferSingleQuotes()
    {
        if (_head.dialect.quote != '"' || _text.find('\'') == std::string_view::npos)
            return;
        TextDialect dialect = _head.dialect;
        dialect.quote = dialect.escape = '\'';
        const HeadRecords head = split(dialect);
        if (head.isRegular() && isNeeded(dialect, head))
            _head.dialect = dialect;
    }

    /// Lines with fewer fields than the records above the names, if a blank line follows them or
    /// the records below have a column of numbers.
    bool findBelowTitle()
    {
        if (_given.skipped > 0)
            return false;
        std::string_view rest = _text;
        bool isAfterBlank = false;
        for (std::uint64_t line = 1; line <= kMostTitleLines && !rest.empty(); ++line) {
            const std::string_view title = rest.substr(0, rest.find_first_of("\r\n"));
            isAfterBlank = isAfterBlank || title.empty();
            rest = withoutLines(rest, 1);
            _head.skipped = line;
            if (takeSeparator({.comment = _given.comment}) && isBelowTitle(isAfterBlank, line)) {
                _head.doubts.push_back(
                    {"the first " + (line == 1 ? "line is" : std::to_string(line) + " lines are") +
                         std::string(" ignored as a title"),
                     "--skip N sets the number of lines"});
                return true;
            }
        }
        _head = {};
        return false;
    }

    /// Whether no line of the title has as many fields as the records.
    bool isShortTitle(const HeadRecords& head, std::uint64_t lines) const
    {
        std::string_view rest = _text;
        for (; lines > 0; --lines, rest = withoutLines(rest, 1)) {
            const std::string_view title = rest.substr(0, rest.find_first_of("\r\n"));
            const auto separators = std::ranges::count(title, _head.dialect.separator);
            if (static_cast<std::size_t>(separators) + 1 >= head.records.front().size())
                return false;
        }
        return true;
    }

    bool isBelowTitle(bool isAfterBlank, std::uint64_t lines) const
    {
        const HeadRecords head = split(_head.dialect);
        return head.records.size() > 1 && isShortTitle(head, lines) &&
               (isAfterBlank || (hasTypedColumn(head) && headerDoubt(head).reason.empty()));
    }

    /// Some line is wrong or a text. The first line decides.
    void useFirstLine()
    {
        _head = {};
        _head.dialect.comment = _given.comment;
        if (_given.separator != '\0') {
            _head.dialect.separator = _given.separator;
            return;
        }
        const HeadRecords head = split(_head.dialect);
        TextDialect whole = _head.dialect;
        whole.separator = '\0';
        const HeadRecords lines = split(whole);
        if (head.records.empty() || head.records.front().size() > 1 || lines.records.empty())
            return;
        const char most =
            *std::max_element(kSeparators.begin(), kSeparators.end(), [&](char left, char right) {
                return countIn(lines.records.front(), left) < countIn(lines.records.front(), right);
            });
        if (countIn(lines.records.front(), most) > 0)
            _head.dialect.separator = most;
    }

    void noteComment() { _head.notes.emplace_back("lines that begin with # are ignored"); }

    void noteQuotes()
    {
        if (_head.dialect.quote == '\'')
            _head.notes.emplace_back("single quotes enclose texts");
        if (_head.dialect.escape == '\\')
            _head.notes.emplace_back("a backslash precedes quotes in texts");
    }

    const GivenText& _given;
    Beginning _begin;
    std::string_view _text;
    TextHead _head;
};

} // namespace

TextHead textHead(const std::string& path, const GivenText& given)
{
    TextHead head = HeadJudge(path, given).judge();
    // These are the user's own.
    if (given.comment != '\0')
        head.dialect.comment = '\0';
    return head;
}
