#pragma once

#include <string>

namespace datafile {

/// How the database reads a CSV file.
struct CsvReading
{
    /// Names the tables for records that do not fit; if it is empty, such a record fails the
    /// statement. Only one thread reads then.
    std::string rejects = {};
    /// Whether a record may be longer than kLongCsvRecord, up to kLongestCsvRecord.
    bool hasLongRecords = false;
    /// Several threads of the database begin within the file. If the file has quotes, one of them
    /// may begin at a wrong place; then the statement fails or loses records.
    bool inOneThread = false;
};

} // namespace datafile
