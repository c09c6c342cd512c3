#pragma once

#include <string>

#include "datafile/FieldNames.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The data model of a result document. Texts and charts refer to its fields by name.
Json fieldModel(const std::string& name, const datafile::Fields& fields);

} // namespace EmbeddedHV
