#pragma once

#include <string>
#include <vector>

#include "datafile/FieldNames.h"

namespace EmbeddedHV {

/// The columns of a file as a job sees them: values that a field declares missing are none.
/// `columns` gives SQL for each field, of the field's storage.
std::string selectList(const datafile::Fields& fields, const std::vector<std::string>& columns);

/// Whether selectList would change a value.
bool anyUserMissing(const datafile::Fields& fields);

} // namespace EmbeddedHV
