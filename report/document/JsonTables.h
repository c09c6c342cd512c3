#pragma once

#include <iosfwd>
#include <string>

#include "report/document/PageDocument.h"

/// Whether a value is an array of objects, the rows of a table.
bool isRecords(const PageJson& value);

/// Writes an array as a table: objects as rows with their members as columns, arrays as rows, other
/// values as one column.
void writeArray(std::ostream& out, const std::string& name, const PageJson& array);

/// Writes the scalar members of an object as a table of names and values; nothing if there are
/// none.
void writePairs(std::ostream& out, const std::string& name, const PageJson& object);
