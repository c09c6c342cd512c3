#pragma once

#include <string>
#include <vector>

#include "datafile/Dictionary.h"
#include "datafile/Duck.h"
#include "datafile/FileColumns.h"

namespace datafile {

/// The columns with names and types only. For several files that are one dataset, the fields of
/// their folders follow those of the files. Throws QueryError if the file is not a Parquet file,
/// and Fault if one of several is not, or if its fields differ from those of the first one.
ParquetColumns parquetColumns(duck::Connection& connection, const std::string& path);

/// Adds the descriptions in the file to the fields and also returns them as a dictionary. An
/// invalid dictionary, or one that contradicts the columns, is refused. A value that is longer than
/// its declared width is only found by the query, which then raises a fault. A data model may be
/// outdated, because other programs may have changed the file: what does not fit the columns is
/// ignored. `origin` is the file's name for messages. Throws Fault.
Dictionary describeColumns(duck::Connection& connection, const std::string& path,
                           const std::string& origin, ParquetColumns& columns);

/// The maximum length of the variable's texts in UTF-8 bytes; 0 if unknown.
std::size_t mostBytes(const Dictionary& dictionary, const DictionaryVariable& variable);

} // namespace datafile
