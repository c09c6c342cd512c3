#include "datafile/CsvScanner.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>

namespace datafile {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
/// The database's reader gives up on longer lines as well.
constexpr std::size_t kLongestRecord = std::size_t{64} * 1024 * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

} // namespace

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
    _consumed += _at;
    _end -= _at;
    _at = 0;
    if (_end == _buffer.size()) {
        if (_buffer.size() >= kLongestRecord)
            // An unclosed quote would take the whole of a large file into memory.
            throw std::length_error("line " + std::to_string(_line) + " does not end");
        _buffer.resize(_buffer.size() * 2);
    }
    const ssize_t got = _file.readUpTo(_buffer.data() + _end, _buffer.size() - _end);
    if (got < 0)
        throw std::system_error(errno, std::generic_category());
    _end += static_cast<std::size_t>(got);
    // A read that fills the room may have more behind it.
    _atEnd = _end < _buffer.size();
    _marks.find(_buffer.data(), 0, _end);
    _mark = 0;
    return got > 0;
}

/// The bytes that are left. `afterReturn` says whether a carriage return came just before: a line
/// feed after it belongs to the same line end.
std::size_t CsvScanner::skipBlankLines(bool& afterReturn)
{
    for (; _at < _end && isLineEnd(_buffer[_at]); ++_at, ++_mark) {
        const bool isReturn = _buffer[_at] == '\r';
        if (isReturn || !afterReturn)
            ++_line;
        afterReturn = isReturn;
    }
    return _end - _at;
}

bool CsvScanner::next(std::vector<CsvField>& fields)
{
    bool afterReturn = false;
    while (skipBlankLines(afterReturn) == 0)
        if (!refill())
            return false;
    while (!splitRecord(fields))
        refill();
    return true;
}

/// False if the record goes on past the bytes at hand.
bool CsvScanner::splitRecord(std::vector<CsvField>& fields)
{
    fields.clear();
    std::uint64_t lines = 0;
    std::size_t mark = _mark;
    std::size_t at = _at;
    while (true) {
        const bool quoted = at < _end && _buffer[at] == '"';
        const std::size_t textEnd = quoted ? closingQuote(mark, lines) : delimiter(mark);
        // Whatever stands between the closing quote and the comma is the database's to refuse.
        const std::size_t end = quoted ? delimiter(mark) : textEnd;
        if (end == _end && !_atEnd)
            return false;
        // Only a quote at the very end leaves its field without one that closes it.
        _unclosed = quoted && textEnd == _end;
        const std::size_t textBegin = quoted ? at + 1 : at;
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

/// The first comma or line end from `mark` on, where `mark` then stands, or the end of the bytes. A
/// quote inside a field that does not begin with one is a letter like others.
std::size_t CsvScanner::delimiter(std::size_t& mark) const
{
    while (mark < _marks.count() && _buffer[_marks[mark]] == '"')
        ++mark;
    return mark < _marks.count() ? _marks[mark] : _end;
}

/// The quote that closes the one at `mark`, or the end of the bytes; `mark` goes past it, and
/// `lines` counts the line ends between.
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
