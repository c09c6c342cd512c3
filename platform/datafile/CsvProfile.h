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

/// What a CSV file looks like from its records: names, and for each column the narrowest kind that
/// holds all its values. Records with the wrong number of fields do not change names or kinds.
class CsvProfile
{
public:
    /// Reads the first record: the names, or what numbers the fields. `expected`, if not empty,
    /// fixes the types of the columns from outside. Throws Fault that names the file.
    CsvProfile(std::string path, bool hasHeader, std::vector<CFField::StorageType> expected = {});

    const std::vector<std::string>& names() const { return _names; }
    /// A column without any value is a String.
    CFField::StorageType storageOf(std::size_t column) const;

    /// From here on the texts are measured and looked at closely too; at best before anything is
    /// read.
    void measure();
    /// The longest text of a column in bytes, and whether a record has none there.
    std::size_t longest(std::size_t column) const { return _longest[column]; }
    bool hasGap(std::size_t column) const { return _gaps[column]; }
    /// The first record, if any, that breaks the rules of a CSV file: its quotes, its line end, its
    /// number of fields and, if the texts are measured, its encoding.
    const std::optional<CsvFlaw>& flaw() const { return _flaw; }

    /// Reads on until the records seen reach a number or the end of the file; false if `goOn`,
    /// asked now and then, stops it.
    bool read(std::uint64_t records, const std::function<bool()>& goOn = {});
    /// From here on the database reads the same records and refuses what is no number, date or
    /// time, so only what it would take and change is looked for: that is much less work.
    void trust() { _trusting = true; }
    bool trusting() const { return _trusting; }
    /// Begins again and trusts nobody.
    bool readAnew(std::uint64_t records, const std::function<bool()>& goOn);
    /// Whether the whole file has been read.
    bool complete() const { return _complete; }
    std::uint64_t records() const { return _records; }

    /// A value that the database would change to make it fit, such as 1.5 in an Integer.
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
    void take();
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
    std::vector<CFField::StorageType> _expected;
    std::optional<Misfit> _misfit;
    std::optional<CsvFlaw> _flaw;
    std::vector<std::size_t> _longest; ///< empty if the texts are not measured
    std::vector<bool> _gaps;
    std::vector<CsvField> _fields;
    std::uint64_t _records = 0;
    bool _complete = false;
    bool _trusting = false;
};

Fault faultOf(const CsvFlaw& flaw, const std::string& path);

/// The first flaw of a file's first `records` records, encoding included. Host and engine both
/// refuse a file by this answer, so that they name the same place. `goOn` as for read(): nothing is
/// found once it says no. Throws Fault.
std::optional<CsvFlaw> firstCsvFlaw(const std::string& path, bool hasHeader, std::uint64_t records,
                                    const std::function<bool()>& goOn);

} // namespace datafile
