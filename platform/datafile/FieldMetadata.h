#pragma once

#include <string>

#include "datafile/FieldNames.h"

namespace datafile {

/// A field with the measure that its storage suggests, an input of an analysis.
CFField plainField(const std::string& name, CFField::StorageType storage);

/// Gives a field another storage. What is known of its values stays where they remain comparable,
/// as integer and real numbers do; else only measure, role and label stay.
void changeStorage(CFField& field, CFField::StorageType storage);

/// Whether a 64 bit integer is the same number.
bool isWhole(double number);

/// A number as fields of the storage have it: an integer where they are integers, else real, if
/// no digit is lost by it. Anything else stays as it is.
CFDatum numberAs(const CFDatum& datum, CFField::StorageType storage);

/// The part of a data model that suits the fields: all but the storage of each field whose name
/// stands in `model` with values of the same kind. Texts weigh nothing, whatever the model says.
void adoptMetadata(Fields& fields, const Fields& model);

} // namespace datafile
