#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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

/// A place where a CSV file breaks its rules.
struct CsvFlaw
{
    std::uint64_t line = 0;   ///< from 1
    std::uint64_t column = 0; ///< in characters, from 1; 0 if the whole record is meant
    std::string text;         ///< what is wrong
    std::uint64_t record = 0; ///< how many records were read up to and with this one
    bool isOfFile = false;    ///< not of one record, so that a reader cannot skip it

    /// As in "3:7: a quote is not closed".
    std::string described() const;
};

/// How the lines of a CSV file end.
enum class CsvLineEnd
{
    None, ///< the file has no complete line
    LineFeed,
    Return,
    ReturnLineFeed
};

/// Walks over the records of a CSV file: comma, double quote, one kind of line end, blank lines
/// skipped. As in the database's reader, one blank may precede an opening quote, and any number may
/// follow a closing one. The scanner learns names and types, and finds the flaws that the database
/// reads over; the records of a job come from the database.
class CsvScanner
{
public:
    /// Throws std::system_error if the file cannot be opened.
    explicit CsvScanner(const std::string& path);

    /// From here on a blank line is a record with one missing value, as it is in a file with one
    /// column.
    void takeBlankLines() { _takesBlankLines = true; }
    /// False at the end of the file. Throws std::system_error, and std::length_error for a record
    /// that is longer than any CSV record has reason to be.
    bool next(std::vector<CsvField>& fields);
    /// The number of the line on which the record of the last next() begins, from 1.
    std::uint64_t line() const { return _recordLine; }
    /// How the first line ends that has ended so far.
    CsvLineEnd lineEnd() const { return _lineEnd; }
    /// Reads past the end of the record, so that lineEnd() knows of the first line.
    void finishLine();
    /// The first flaw that the last next() met, be it true or false: in a line end before the
    /// record, or in the record.
    const std::optional<CsvFlaw>& flaw() const { return _flaw; }
    /// The bytes before the next record.
    std::uint64_t offset() const { return _consumed + _at; }

private:
    bool refill();
    bool isAtLineEnd();
    void takeLineEnd();
    bool splitRecord(std::vector<CsvField>& fields);
    std::size_t delimiter(std::size_t& mark) const;
    std::size_t closingQuote(std::size_t& mark, std::uint64_t& lines) const;
    std::size_t openingQuote(std::size_t at) const;
    void findTextAfterQuote(std::size_t quote, std::size_t end);
    void note(std::size_t at, const char* text);

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
    bool _takesBlankLines = false;
    bool _isRecordOpen = false; ///< the line end of the last record is still to come
    CsvLineEnd _lineEnd = CsvLineEnd::None;
    std::optional<CsvFlaw> _flaw;
};

/// The text of a field: inner quotes halved.
std::string textOf(const CsvField& field);

} // namespace datafile
