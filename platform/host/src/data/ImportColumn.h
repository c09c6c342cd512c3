#pragma once

#include <string>

#include "datafile/CsvValue.h"

/// A column of a file that is imported, in the terms of the database.
struct ImportColumn
{
    std::string name;
    std::string type;
    std::string value = {}; ///< an expression over the text, if the database cannot read the type
};

/// The type of a column with values of one kind.
const char* importType(datafile::CsvKind kind);

/// The type to read a column with. A type without a counterpart among the storages is read as text.
std::string readType(const std::string& found);

/// The item of a select list for a column: nested values are JSON, and times have no zone.
std::string selectedItem(const ImportColumn& column);
