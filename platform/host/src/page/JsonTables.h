#pragma once

#include <iosfwd>
#include <string>

#include "page/PageDocument.h"

/// Whether a value is an array of objects, which make the rows of a table.
bool isRecords(const PageJson& value);

/// Writes an array as a table: objects as rows under the names of their members, arrays as rows,
/// other values as one column.
void writeArray(std::ostream& out, const std::string& name, const PageJson& array);

/// Writes the members of an object that are neither object nor array as a table of names and
/// values; nothing if there are none.
void writePairs(std::ostream& out, const std::string& name, const PageJson& object);
