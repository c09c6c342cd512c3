#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "datafile/CsvMarks.h"
#include "datafile/FileDescriptor.h"

namespace datafile {

/// One field of a CSV record: its bytes without the outer quotes, inner quotes still doubled. Lasts
/// until the next record.
struct CsvField
{
    std::string_view text;
    bool quoted = false;
};

/// Walks over the records of a CSV file: comma, double quote, any line end, blank lines skipped. It
/// is there to learn names and types; the records of a job come from the database's own reader.
class CsvScanner
{
public:
    /// Throws std::system_error if the file cannot be opened.
    explicit CsvScanner(const std::string& path);

    /// False at the end of the file. Throws std::system_error, and std::length_error for a record
    /// that is longer than any CSV record has reason to be.
    bool next(std::vector<CsvField>& fields);
    /// The number of the line on which the record of the last next() begins, from 1.
    std::uint64_t line() const { return _recordLine; }
    /// Whether the file ended within the quotes of that record.
    bool unclosed() const { return _unclosed; }
    /// The bytes before the next record.
    std::uint64_t offset() const { return _consumed + _at; }

private:
    bool refill();
    std::size_t skipBlankLines(bool& afterReturn);
    bool splitRecord(std::vector<CsvField>& fields);
    std::size_t delimiter(std::size_t& mark) const;
    std::size_t closingQuote(std::size_t& mark, std::uint64_t& lines) const;

    FileDescriptor _file;
    std::vector<char> _buffer;
    CsvMarks _marks;       ///< of the bytes in the buffer
    std::size_t _mark = 0; ///< the first one that is not before `_at`
    std::size_t _at = 0;
    std::size_t _end = 0;
    std::uint64_t _consumed = 0;
    std::uint64_t _line = 1;
    std::uint64_t _recordLine = 1;
    bool _atEnd = false;
    bool _unclosed = false;
};

/// The text of a field: inner quotes halved.
std::string textOf(const CsvField& field);

} // namespace datafile
