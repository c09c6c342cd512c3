#pragma once

#include <duckdb.h>

#include <string>

#include "CFField.h"

namespace datafile {

/// The type of a column that holds a field of this storage, in SQL.
const char* sqlTypeOf(CFField::StorageType storage);
/// The word for messages, as in "Integer".
const char* typeWordOf(CFField::StorageType storage);

duckdb_type columnTypeOf(CFField::StorageType storage);

/// The storage that holds values of a database column, whatever its type.
CFField::StorageType storageOfColumn(duckdb_type type);
/// `column`, a quoted name, as SQL of the type that its storage stands for.
std::string canonicalColumn(const std::string& column, duckdb_type type);

/// SQL of a column on the scale on which data models tell its values: a date in days, a timestamp
/// in seconds, both since 1970-01-01, a time in seconds.
std::string onModelScale(const std::string& column, CFField::StorageType storage);

/// Numbers are measured, everything else is named.
CFField::FieldType defaultMeasure(CFField::StorageType storage);

} // namespace datafile
