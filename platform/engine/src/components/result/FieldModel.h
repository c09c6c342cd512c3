#pragma once

#include <string>

#include "datafile/FieldNames.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The data model of a result document: what its texts and charts may say of fields by name alone.
Json fieldModel(const std::string& name, const datafile::Fields& fields);

} // namespace EmbeddedHV
