#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "datafile/CsvScanner.h"
#include "datafile/CsvValue.h"
#include "datafile/Fault.h"
#include "datafile/FieldNames.h"

namespace datafile {

/// Determines names and column types of a CSV file from its records. The type of a column is the
/// narrowest that holds all its values. Records with a wrong number of fields are ignored.
class CsvProfile
{
public:
    /// Reads the first record: the names, or the number of fields. A non-empty `expected` fixes the
    /// types of the columns. Throws Fault with the name of the file.
    CsvProfile(std::string path, bool hasHeader, std::vector<CFField::StorageType> expected = {});

    const std::vector<std::string>& names() const { return _names; }
    /// A column without any value is a String.
    CFField::StorageType storageOf(std::size_t column) const;

    /// Also checks and measures texts from now on. Call it before anything is read.
    void measure();
    /// The longest text of a column in bytes.
    std::size_t longest(std::size_t column) const { return _longest[column]; }
    /// Whether a record has no text in the column.
    bool hasGap(std::size_t column) const { return _gaps[column]; }
    /// The first record that violates the CSV rules: quotes, line ends, number of fields and, if
    /// texts are measured, encoding.
    const std::optional<CsvFlaw>& flaw() const { return _flaw; }

    /// Whether a record so far may be longer than kLongCsvRecord. True for each that is.
    bool hasLongRecord() const { return _hasLongRecord || _scanner.hasLongRecord(); }

    /// Whether the file so far has a double quote.
    bool hasQuotes() const { return _hasQuotes || _scanner.hasQuotes(); }
    /// Whether several threads may read the file so far with losses, see CsvScanner.
    bool misleadsThreads() const { return _misleadsThreads || _scanner.misleadsThreads(); }

    /// The first flaw that a reader cannot skip.
    const std::optional<CsvFlaw>& fatalFlaw() const { return _fatalFlaw; }

    /// Reads until that many records are read or the file ends. Returns false if `goOn`, which is
    /// asked repeatedly, stops it.
    bool read(std::uint64_t records, const std::function<bool()>& goOn = {});
    /// From now on the database reads the same records and refuses invalid numbers, dates and
    /// times. Only values that it would accept and change are searched, which is much faster. With
    /// `columnsRead`, the database reads only these columns, and values of others are not looked
    /// at.
    void trust(const std::optional<std::vector<bool>>& columnsRead = {});
    bool trusting() const { return _trusting; }
    /// Starts again from the first record, without trust().
    bool readAnew(std::uint64_t records, const std::function<bool()>& goOn);
    /// Whether the whole file has been read.
    bool complete() const { return _complete; }
    /// Whether the type of a column may be only that of the records before trust().
    bool hasUnreadColumn() const { return _hasUnreadColumn; }
    std::uint64_t records() const { return _records; }

    /// A value that the database would change to fit, for example 1.5 in an Integer column.
    struct Misfit
    {
        std::uint64_t line = 0;
        std::size_t column = 0;
        std::string text;
    };
    /// The first value that does not fit its fixed type.
    const std::optional<Misfit>& misfit() const { return _misfit; }

private:
    void readNames();
    bool next();
    void take();
    void takeWellFormed();
    void watchAll();
    void takeKind(std::size_t column, const CsvField& field);
    void takeExpected();
    void takeFlaw(const CsvFlaw& flaw);
    void takeLengths();
    void takeBlankHead();
    void checkExpected(std::size_t column, CsvKind kind);

    std::string _path;
    CsvScanner _scanner;
    bool _hasHeader;
    std::vector<std::string> _names;
    std::vector<CsvKind> _kinds;
    std::vector<std::size_t> _watched; ///< the columns whose values are looked at
    std::vector<CFField::StorageType> _expected;
    std::optional<Misfit> _misfit;
    std::optional<CsvFlaw> _flaw;
    std::optional<CsvFlaw> _fatalFlaw;
    std::vector<std::size_t> _longest; ///< empty if the texts are not measured
    std::vector<bool> _gaps;
    std::vector<CsvField> _fields;
    std::uint64_t _records = 0;
    bool _complete = false;
    bool _trusting = false;
    bool _hasUnreadColumn = false;
    bool _hasLongRecord = false;   ///< the value before readAnew
    bool _hasQuotes = false;       ///< likewise
    bool _misleadsThreads = false; ///< likewise
};

Fault faultOf(const CsvFlaw& flaw, const std::string& path);

/// The first flaw in the first `records` records of a file, including its encoding. Host and engine
/// both refuse a file by this result, so that they name the same place. If `goOn` returns false, no
/// flaw is returned. Throws Fault.
std::optional<CsvFlaw> firstCsvFlaw(const std::string& path, bool hasHeader, std::uint64_t records,
                                    const std::function<bool()>& goOn);

} // namespace datafile
