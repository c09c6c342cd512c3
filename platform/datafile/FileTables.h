#pragma once

#include <string>

#include "datafile/CsvReading.h"
#include "datafile/Duck.h"
#include "datafile/FieldNames.h"
#include "datafile/FileKind.h"
#include "datafile/OpenSealed.h"
#include "datafile/ParquetParts.h"

namespace datafile {

/// The options of the database's CSV reader for records of up to kLongestCsvRecord. Without them it
/// refuses records of 2 MB, and returns nothing for a record that is longer than its buffer. With
/// them its buffers take 256 MB more.
std::string csvLimits();

/// The FROM item for a CSV file with these columns.
std::string csvTable(const std::string& path, bool hasHeader, const Fields& columns,
                     const CsvReading& reading);
/// The second table that the database creates with `rejects`.
std::string rejectScansOf(const std::string& rejects);
/// The FROM item for a Parquet file, or for several that are one dataset. Throws Fault as
/// parquetParts does.
std::string parquetTable(const std::string& path);
/// The same for parts that are known.
std::string parquetTable(const ParquetParts& parts);

/// The text for a key of a Parquet file's metadata, or of the first of several; empty if it is
/// missing or the file is not a Parquet file. Throws Fault as parquetParts does.
std::string parquetMetadata(duck::Connection& connection, const std::string& path,
                            const std::string& key);

} // namespace datafile
