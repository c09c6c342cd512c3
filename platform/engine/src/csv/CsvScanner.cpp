#include "csv/CsvScanner.h"

#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>

namespace EmbeddedHV {
namespace {

constexpr std::size_t kBufferSize = 256U * 1024U;
/// The database's reader gives up on longer lines as well.
constexpr std::size_t kLongestRecord = 64U * 1024U * 1024U;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// A position that lies past the bytes at hand: more must be read first.
constexpr std::size_t kUnknown = SIZE_MAX;

bool isLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

/// A mask whose lowest bit stands in the first byte of `word` that is `character`; 0 without one.
std::uint64_t matches(std::uint64_t word, char character)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101U;
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    const std::uint64_t difference = word ^ (kOnes * static_cast<unsigned char>(character));
    return (difference - kOnes) & ~difference & kHighBits;
}

/// Where the first comma or line end is, or `end`. Eight bytes at a time: this is where the scanner
/// spends its time.
std::size_t findDelimiter(const char* bytes, std::size_t at, std::size_t end)
{
    if constexpr (std::endian::native == std::endian::little)
        for (; end - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes + at, sizeof word);
            const std::uint64_t found =
                matches(word, ',') | matches(word, '\n') | matches(word, '\r');
            if (found != 0)
                return at + static_cast<std::size_t>(std::countr_zero(found)) / 8;
        }
    while (at < end && bytes[at] != ',' && !isLineEnd(bytes[at]))
        ++at;
    return at;
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
            throw std::length_error("line " + std::to_string(_line) + " does not end");
        _buffer.resize(_buffer.size() * 2);
    }
    const ssize_t got = _file.readUpTo(_buffer.data() + _end, _buffer.size() - _end);
    if (got < 0)
        throw std::system_error(errno, std::generic_category());
    _end += static_cast<std::size_t>(got);
    _atEnd = _end < _buffer.size();
    return got > 0;
}

std::size_t CsvScanner::skipBlankLines()
{
    while (_at < _end && isLineEnd(_buffer[_at])) {
        // A line feed after a carriage return belongs to the same line end.
        if (_buffer[_at] == '\n' || (_at + 1 < _end && _buffer[_at + 1] != '\n'))
            ++_line;
        ++_at;
    }
    return _end - _at;
}

bool CsvScanner::next(std::vector<CsvField>& fields)
{
    while (skipBlankLines() == 0)
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
    std::size_t at = _at;
    while (true) {
        CsvField field;
        const std::size_t end = fieldEnd(at, field, lines);
        if (end == kUnknown)
            return false;
        fields.push_back(field);
        if (end == _end || isLineEnd(_buffer[end])) {
            _recordLine = _line;
            _line += lines;
            _at = end;
            return true;
        }
        at = end + 1; // past the comma
    }
}

std::size_t CsvScanner::fieldEnd(std::size_t from, CsvField& field, std::uint64_t& lines) const
{
    if (from < _end && _buffer[from] == '"')
        return quotedEnd(from, field, lines);
    const std::size_t at = findDelimiter(_buffer.data(), from, _end);
    if (at == _end && !_atEnd)
        return kUnknown;
    field.text = {_buffer.data() + from, at - from};
    return at;
}

std::size_t CsvScanner::quotedEnd(std::size_t from, CsvField& field, std::uint64_t& lines) const
{
    field.quoted = true;
    std::size_t at = from + 1;
    while (at < _end) {
        if (_buffer[at] == '\n')
            ++lines;
        if (_buffer[at] != '"') {
            ++at;
            continue;
        }
        if (at + 1 == _end && !_atEnd)
            return kUnknown;
        if (at + 1 < _end && _buffer[at + 1] == '"') {
            at += 2;
            continue;
        }
        break;
    }
    if (at >= _end && !_atEnd)
        return kUnknown;
    field.text = {_buffer.data() + from + 1, at - from - 1};
    // Whatever stands between the closing quote and the comma is the database's to complain about.
    while (at < _end && _buffer[at] != ',' && !isLineEnd(_buffer[at]))
        ++at;
    return at == _end && !_atEnd ? kUnknown : at;
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

} // namespace EmbeddedHV
