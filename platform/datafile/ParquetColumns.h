#pragma once

#include <string>
#include <vector>

#include "datafile/Dictionary.h"
#include "datafile/Duck.h"
#include "datafile/FieldNames.h"

namespace datafile {

/// The columns of a Parquet file: a field, and the SQL of the values, for each.
struct ParquetColumns
{
    Fields fields;
    std::vector<std::string> values; ///< of the type that the field's storage stands for
};

/// The columns, of which nothing but names and types is known. Throws QueryError for a file that is
/// no Parquet file.
ParquetColumns parquetColumns(duck::Connection& connection, const std::string& path);

/// Adds to the fields what the file itself says of them, and gives it as a dictionary as well.
/// A dictionary that is wrong, or contradicts the columns, is refused, be it by a value that is
/// longer than it says: its query then raises a fault. A data model is a guest in the file, which
/// other programs may have changed: what does not suit the columns counts for nothing. `origin` is
/// the file as messages name it. Throws Fault.
Dictionary describeColumns(duck::Connection& connection, const std::string& path,
                           const std::string& origin, ParquetColumns& columns);

/// How many bytes a text of the variable can have in UTF-8; 0 where nobody has counted.
std::size_t mostBytes(const Dictionary& dictionary, const DictionaryVariable& variable);

/// Tells apart, letter case apart, the names of the fields.
void makeNamesUnique(Fields& fields);

} // namespace datafile
