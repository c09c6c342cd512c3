#pragma once

#include <string>
#include <vector>

#include "datafile/FieldNames.h"
#include "dialect/Dialect.h"

namespace EmbeddedHV {

/// The columns of a file for a job: values that a field declares missing become missing. `columns`
/// has the SQL of each field.
std::string selectList(const Dialect& dialect, const datafile::Fields& fields,
                       const std::vector<std::string>& columns);

/// Whether selectList would change a value.
bool anyUserMissing(const Dialect& dialect, const datafile::Fields& fields);

} // namespace EmbeddedHV
