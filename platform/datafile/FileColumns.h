#pragma once

#include <string>
#include <vector>

#include "datafile/FieldNames.h"

namespace datafile {

/// The columns of a Parquet file: a field and the SQL of its values for each.
struct ParquetColumns
{
    Fields fields;
    std::vector<std::string> values; ///< of the field's storage type
};

/// Makes the names of the fields unique, ignoring letter case.
void makeNamesUnique(Fields& fields);

} // namespace datafile
