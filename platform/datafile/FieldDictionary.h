#pragma once

#include "datafile/Dictionary.h"
#include "datafile/FieldNames.h"

namespace datafile {

/// The fields of a job as a dictionary: what a SAV file says of them. Widths are left open. Of
/// missing values it takes as many as a dictionary holds, the range and the first ones.
Dictionary dictionaryOfFields(const Fields& fields);

/// Whether a dictionary holds all missing values of a field.
bool holdsMissingValues(const CFField& field);

/// What the dictionary says of the fields whose names stand in it: measure, role, labels, missing
/// values and print format. Storages stay; what is said of a text does not hold for a number, nor
/// the other way round.
void adoptDictionary(Fields& fields, const Dictionary& dictionary);

} // namespace datafile
