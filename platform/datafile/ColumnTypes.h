#pragma once

#include <duckdb.h>

#include <string>

#include "CFField.h"
#include "datafile/StorageWords.h"

namespace datafile {

/// The SQL type of a column for fields of this storage.
const char* sqlTypeOf(CFField::StorageType storage);

duckdb_type columnTypeOf(CFField::StorageType storage);

/// The storage for values of a database column of this type.
CFField::StorageType storageOfColumn(duckdb_type type);
/// Converts `column`, a quoted name, to the SQL type of its storage.
std::string canonicalColumn(const std::string& column, duckdb_type type);

/// Converts a column to the scale of data models: a date in days and a timestamp in seconds since
/// 1970-01-01, a time in seconds.
std::string onModelScale(const std::string& column, CFField::StorageType storage);

} // namespace datafile
