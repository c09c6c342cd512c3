#pragma once

#include "datafile/Dictionary.h"
#include "datafile/FieldNames.h"

namespace datafile {

/// The fields of a job as a dictionary: what a SAV file says of them. Widths are left open.
Dictionary dictionaryOfFields(const Fields& fields);

/// What the dictionary says of the fields whose names stand in it: measure, role, labels, missing
/// values and print format. Storages stay.
void adoptDictionary(Fields& fields, const Dictionary& dictionary);

} // namespace datafile
