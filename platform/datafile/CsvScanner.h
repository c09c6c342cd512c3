#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/FileDescriptor.h"
#include "datafile/CsvMarks.h"

namespace datafile {

/// One field of a CSV record: its bytes without the outer quotes; inner quotes are still doubled.
/// Valid until the next record.
struct CsvField
{
    std::string_view text;
    bool quoted = false;
};

/// A place where a CSV file breaks its rules.
struct CsvFlaw
{
    std::uint64_t line = 0;      ///< from 1
    std::uint64_t column = 0;    ///< in characters, from 1; 0 for the whole record
    std::string text;            ///< what is wrong
    std::uint64_t record = 0;    ///< number of records read, including this one
    bool isOfFile = false;       ///< concerns the whole file
    bool isEndUncertain = false; ///< readers with other rules may end the record elsewhere
    const char* kind = "";       ///< of the error, see FaultIds.h

    /// Whether a reader can leave out the record and read the rest of the file.
    bool canBeSkipped() const { return !isOfFile && !isEndUncertain; }
    /// For example "3:7: a quote is not closed".
    std::string described() const;
};

/// The limit of all readers for a record in bytes.
constexpr std::size_t kLongestCsvRecord = std::size_t{64} * 1024 * 1024;
constexpr const char* kRecordTooLong = "the record is longer than 64 MiB";
/// Shorter records are within the database's own limit of 2 MB.
constexpr std::size_t kLongCsvRecord = std::size_t{1} << 20;

/// Line ends of a CSV file.
enum class CsvLineEnd
{
    None, ///< the file has no complete line
    LineFeed,
    Return,
    ReturnLineFeed
};

/// Reads the records of a CSV file with commas, double quotes and one kind of line end. Skips blank
/// lines. As in the database's reader, one blank may precede an opening quote, and any number may
/// follow a closing one. The scanner determines names and types, and finds flaws that the database
/// ignores; the records of a job come from the database.
class CsvScanner
{
public:
    /// Throws std::system_error if the file cannot be opened.
    explicit CsvScanner(const std::string& path);

    /// From now on a blank line is a record with one missing value, as in a file with one column.
    void takeBlankLines() { _takesBlankLines = true; }
    /// Reads a record. Returns false at the end of the file. Throws std::system_error, and
    /// std::length_error for a record of an absurd length.
    bool next(std::vector<CsvField>& fields);
    /// Reads the next record if it is well-formed, has that many fields and is within the buffer,
    /// as almost all records are. Otherwise reads nothing and returns false: call next(). Faster
    /// than next(), because it does not split the record.
    bool nextWellFormed(std::size_t fieldCount);
    /// A field of the record that nextWellFormed() has read.
    CsvField field(std::size_t column) const
    {
        const std::size_t mark = _recordMark + column;
        return plainField(column == 0 ? _recordAt : _marks[mark - 1] + 1, _marks[mark]);
    }
    /// The line on which the last record begins, from 1.
    std::uint64_t line() const { return _recordLine; }
    /// The end of the first complete line so far.
    CsvLineEnd lineEnd() const { return _lineEnd; }
    /// Reads to the end of the record's line, so that lineEnd() is known.
    void finishLine();
    /// Whether a record so far may be longer than kLongCsvRecord. True for each that is.
    bool hasLongRecord() const { return _buffer.size() > kLongCsvRecord; }
    /// Whether the file so far has a double quote.
    bool hasQuotes() const { return _hasQuotes; }
    /// Whether threads of the database that begin within the file so far may lose records without
    /// an error: a line end is within quotes, a quote does not surround a field, or lines do not
    /// end in LF and a comma or a doubled quote is within quotes. Found by trying; see
    /// docs/text-files.md.
    bool misleadsThreads() const
    {
        return _hasLooseQuote || (_hasQuotedMark && _lineEnd != CsvLineEnd::LineFeed);
    }
    /// The first flaw that the last next() found, whatever it returned: in a line end before the
    /// record, or in the record.
    const std::optional<CsvFlaw>& flaw() const { return _flaw; }

private:
    bool refill();
    bool isAtLineEnd();
    void takeLineEnd();
    bool splitRecord(std::vector<CsvField>& fields);
    bool splitPlainRecord(std::vector<CsvField>& fields);
    /// A field of a plain buffer, where a field that begins with a quote ends in one.
    CsvField plainField(std::size_t begin, std::size_t end) const
    {
        const std::string_view text(_buffer.data() + begin, end - begin);
        if (text.starts_with('"'))
            return {text.substr(1, text.size() - 2), true};
        return {text, false};
    }
    bool finishPlainLine();
    std::size_t plainLineEnd(std::size_t mark) const;
    std::size_t delimiter(std::size_t& mark) const;
    std::size_t closingQuote(std::size_t& mark, std::uint64_t& lines) const;
    std::size_t openingQuote(std::size_t at) const;
    void findTextAfterQuote(std::size_t quote, std::size_t end);
    void note(std::size_t at, const char* text);

    base::FileDescriptor _file;
    std::vector<char> _buffer;
    CsvMarks _marks;              ///< of the bytes in the buffer
    std::size_t _mark = 0;        ///< the first one at or behind `_at`
    std::size_t _lineEndMark = 0; ///< index of a line end; those before it precede `_mark`
    std::size_t _recordMark = 0;  ///< the first mark of the record that nextWellFormed() has read
    std::size_t _recordAt = 0;    ///< where this record begins
    std::size_t _at = 0;
    std::size_t _end = 0;
    std::uint64_t _line = 1;
    std::uint64_t _recordLine = 1;
    bool _atEnd = false;
    bool _hasQuotes = false;
    bool _hasQuotedMark = false; ///< see CsvMarks
    bool _hasLooseQuote = false; ///< a buffer was not plain
    bool _takesBlankLines = false;
    bool _isRecordOpen = false; ///< the line end of the last record is not read yet
    CsvLineEnd _lineEnd = CsvLineEnd::None;
    std::optional<CsvFlaw> _flaw;
};

/// The text of a field, with inner quotes undoubled.
std::string textOf(const CsvField& field);

} // namespace datafile
