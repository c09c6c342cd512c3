#pragma once

#include "datafile/Dictionary.h"
#include "datafile/FieldNames.h"

namespace datafile {

/// Converts the fields of a job to a dictionary, without widths. Of missing values it takes the
/// range and the first single ones, as many as a dictionary allows.
Dictionary dictionaryOfFields(const Fields& fields);

/// Whether a dictionary can hold all missing values of a field.
bool holdsMissingValues(const CFField& field);

/// Applies a dictionary to the fields of the same names: measure, role, labels, missing values and
/// print format. Storages are unchanged. Descriptions of texts are not applied to numbers, nor the
/// reverse.
void adoptDictionary(Fields& fields, const Dictionary& dictionary);

} // namespace datafile
