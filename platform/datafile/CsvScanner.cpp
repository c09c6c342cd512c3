#include "datafile/CsvScanner.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>

#include "base/Utf8.h"

namespace datafile {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr const char* kUnclosedQuote = "a quote is not closed";
constexpr const char* kTextAfterQuote =
    "text follows a closing quote; a quote within a quoted text must be doubled";

bool isLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

const char* wordOf(CsvLineEnd end)
{
    switch (end) {
    case CsvLineEnd::LineFeed:
        return "LF";
    case CsvLineEnd::Return:
        return "CR";
    default:
        return "CR LF";
    }
}

} // namespace

std::string CsvFlaw::described() const
{
    return std::to_string(line) + (column == 0 ? "" : ":" + std::to_string(column)) + ": " + text;
}

CsvScanner::CsvScanner(const std::string& path)
    : _file(open(path.c_str(), O_RDONLY | O_CLOEXEC)), _buffer(kBufferSize)
{
    if (!_file)
        throw std::system_error(errno, std::generic_category());
    refill();
    if (std::string_view(_buffer.data(), _end).starts_with(kByteOrderMark))
        _at = kByteOrderMark.size();
}

bool CsvScanner::refill()
{
    if (_atEnd)
        return false;
    std::memmove(_buffer.data(), _buffer.data() + _at, _end - _at);
    _end -= _at;
    _at = 0;
    if (_end == _buffer.size()) {
        if (_buffer.size() >= kLongestCsvRecord)
            // An unclosed quote would read the rest of a large file into memory.
            throw std::length_error("line " + std::to_string(_line) + ": " + kRecordTooLong);
        _buffer.resize(_buffer.size() * 2);
    }
    const ssize_t got = _file.readUpTo(_buffer.data() + _end, _buffer.size() - _end);
    if (got < 0)
        throw std::system_error(errno, std::generic_category());
    _end += static_cast<std::size_t>(got);
    // If the read has filled the buffer, more bytes may follow.
    _atEnd = _end < _buffer.size();
    _marks.find(_buffer.data(), _end, _atEnd);
    _hasQuotes = _hasQuotes || _marks.hasQuotes();
    _hasQuotedMark = _hasQuotedMark || _marks.hasQuotedMark();
    _hasLooseQuote = _hasLooseQuote || !_marks.isPlain();
    _mark = 0;
    _lineEndMark = 0;
    return got > 0;
}

/// Whether a line ends here. Makes sure that both bytes of a two-byte end are in the buffer.
bool CsvScanner::isAtLineEnd()
{
    if (_at == _end && !refill())
        return false;
    if (!isLineEnd(_buffer[_at]))
        return false;
    if (_buffer[_at] == '\r' && _at + 1 == _end)
        refill();
    return true;
}

void CsvScanner::takeLineEnd()
{
    CsvLineEnd end = CsvLineEnd::LineFeed;
    if (_buffer[_at] == '\r')
        end = _at + 1 < _end && _buffer[_at + 1] == '\n' ? CsvLineEnd::ReturnLineFeed
                                                         : CsvLineEnd::Return;
    if (_lineEnd == CsvLineEnd::None)
        _lineEnd = end;
    else if (_lineEnd != end && !_flaw)
        _flaw = {_line, 0,
                 std::string("the line ends in ") + wordOf(end) + ", and the first one in " +
                     wordOf(_lineEnd),
                 0, true};
    const std::size_t length = end == CsvLineEnd::ReturnLineFeed ? 2 : 1;
    _at += length;
    _mark += length; // each byte of a line end is a mark
    ++_line;
}

void CsvScanner::finishLine()
{
    if (_isRecordOpen && isAtLineEnd())
        takeLineEnd();
    _isRecordOpen = false;
}

bool CsvScanner::next(std::vector<CsvField>& fields)
{
    _flaw.reset();
    finishLine();
    while (isAtLineEnd()) {
        if (_takesBlankLines) {
            fields.assign(1, CsvField());
            _recordLine = _line;
            _isRecordOpen = true;
            return true;
        }
        takeLineEnd();
    }
    if (_at == _end)
        return false;
    // If the record continues beyond the buffer, split it again from its start.
    const std::optional<CsvFlaw> before = _flaw;
    while (!splitRecord(fields)) {
        _flaw = before;
        refill();
    }
    _isRecordOpen = true;
    return true;
}

/// Returns false if the record continues beyond the buffer.
bool CsvScanner::splitRecord(std::vector<CsvField>& fields)
{
    if (_marks.isPlain())
        return splitPlainRecord(fields);
    fields.clear();
    std::uint64_t lines = 0;
    std::size_t mark = _mark;
    std::size_t at = _at;
    while (true) {
        const std::size_t quote = openingQuote(at);
        const bool quoted = quote != _end;
        const std::size_t textEnd = quoted ? closingQuote(mark, lines) : delimiter(mark);
        const std::size_t end = quoted ? delimiter(mark) : textEnd;
        if (end == _end && !_atEnd)
            return false;
        // Only a quote that reaches the end of the data has no closing quote.
        if (quoted && textEnd == _end)
            note(quote, kUnclosedQuote);
        else if (quoted && end != textEnd + 1)
            findTextAfterQuote(textEnd, end);
        const std::size_t textBegin = quoted ? quote + 1 : at;
        fields.push_back({{_buffer.data() + textBegin, textEnd - textBegin}, quoted});
        at = end;
        if (end == _end || isLineEnd(_buffer[end]))
            break;
        ++at; // past the comma
        ++mark;
    }
    _recordLine = _line;
    _line += lines;
    _mark = mark;
    _at = at;
    return true;
}

/// Splits a record of a plain buffer. Returns false if it continues beyond the buffer.
bool CsvScanner::splitPlainRecord(std::vector<CsvField>& fields)
{
    fields.clear();
    std::size_t mark = _mark;
    std::size_t at = _at;
    for (;; ++mark) {
        const std::size_t end = mark < _marks.count() ? _marks[mark] : _end;
        if (end == _end && !_atEnd)
            return false;
        fields.push_back(plainField(at, end));
        at = end;
        if (end == _end || _buffer[end] != ',')
            break;
        ++at;
    }
    _recordLine = _line;
    _mark = mark;
    _at = at;
    return true;
}

bool CsvScanner::nextWellFormed(std::size_t fieldCount)
{
    if (!_marks.isPlain() || (_isRecordOpen && !finishPlainLine()))
        return false;
    while (_lineEndMark < _marks.lineEndCount() && _marks.lineEnd(_lineEndMark) < _mark)
        ++_lineEndMark;
    const std::size_t endMark = _mark + fieldCount - 1;
    if (_lineEndMark == _marks.lineEndCount() || _marks.lineEnd(_lineEndMark) != endMark)
        return false;
    const std::size_t end = _marks[endMark];
    const std::size_t length = plainLineEnd(endMark);
    if (end == _at || length == 0)
        return false;
    _flaw.reset();
    _recordMark = _mark;
    _recordAt = _at;
    _recordLine = _line++;
    _mark = endMark + length; // each byte of a line end is a mark
    _at = end + length;
    return true;
}

/// Reads the line end of the last record if it has no flaw.
bool CsvScanner::finishPlainLine()
{
    if (_mark == _marks.count() || _marks[_mark] != _at)
        return false;
    const std::size_t length = plainLineEnd(_mark);
    if (length == 0)
        return false;
    _at += length;
    _mark += length;
    ++_line;
    _isRecordOpen = false;
    return true;
}

/// The length of the line end whose first byte is that mark of a plain buffer. 0 if the end of the
/// buffer leaves it open, or if it differs from the first line end of the file.
std::size_t CsvScanner::plainLineEnd(std::size_t mark) const
{
    const std::size_t at = _marks[mark];
    if (_buffer[at] == '\n')
        return _lineEnd == CsvLineEnd::LineFeed ? 1 : 0;
    if (at + 1 == _end)
        return 0;
    const bool isPair = _buffer[at + 1] == '\n';
    if (_lineEnd != (isPair ? CsvLineEnd::ReturnLineFeed : CsvLineEnd::Return))
        return 0;
    return isPair ? 2 : 1;
}

/// The quote that opens the field at `at`, or the end of the data.
std::size_t CsvScanner::openingQuote(std::size_t at) const
{
    if (at < _end && _buffer[at] == ' ')
        ++at;
    return at < _end && _buffer[at] == '"' ? at : _end;
}

/// Notes the first non-blank character between a closing quote and the end of its field.
void CsvScanner::findTextAfterQuote(std::size_t quote, std::size_t end)
{
    const std::string_view rest(_buffer.data() + quote + 1, end - quote - 1);
    const auto place = rest.find_first_not_of(' ');
    if (place == std::string_view::npos)
        return;
    note(quote + 1 + place, kTextAfterQuote);
    // Another reader may take the next quote for an opening one, and line ends after it for text.
    if (rest.find('"', place) != std::string_view::npos)
        _flaw->isEndUncertain = true;
}

/// Stores a flaw of the current record, unless an earlier one is stored.
void CsvScanner::note(std::size_t at, const char* text)
{
    if (_flaw)
        return;
    const std::string_view before(_buffer.data() + _at, at - _at);
    const std::size_t feed = before.rfind('\n');
    const std::string_view ownLine =
        feed == std::string_view::npos ? before : before.substr(feed + 1);
    _flaw = {_line + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')),
             base::countCharacters(ownLine) + 1, text, 0, false};
}

/// The first comma or line end from `mark` on, or the end of the data; moves `mark` there. A quote
/// inside an unquoted field is an ordinary character.
std::size_t CsvScanner::delimiter(std::size_t& mark) const
{
    while (mark < _marks.count() && _buffer[_marks[mark]] == '"')
        ++mark;
    return mark < _marks.count() ? _marks[mark] : _end;
}

/// The closing quote for the one at `mark`, or the end of the data. Moves `mark` behind it and adds
/// the line ends between to `lines`.
std::size_t CsvScanner::closingQuote(std::size_t& mark, std::uint64_t& lines) const
{
    for (++mark; mark < _marks.count(); ++mark) {
        const std::size_t at = _marks[mark];
        lines += _buffer[at] == '\n' ? 1 : 0;
        if (_buffer[at] != '"')
            continue;
        ++mark;
        if (mark == _marks.count() || _marks[mark] != at + 1 || _buffer[at + 1] != '"')
            return at;
    }
    return _end;
}

std::string textOf(const CsvField& field)
{
    std::string text(field.text);
    if (!field.quoted)
        return text;
    for (auto at = text.find("\"\""); at != std::string::npos; at = text.find("\"\"", at + 1))
        text.erase(at, 1);
    return text;
}

} // namespace datafile
