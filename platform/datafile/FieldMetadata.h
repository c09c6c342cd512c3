#pragma once

#include <string>

#include "datafile/FieldNames.h"

namespace datafile {

/// An input field with the default measure of its storage.
CFField plainField(const std::string& name, CFField::StorageType storage);

/// Changes the storage of a field. If the values remain comparable (integer and real), their
/// descriptions stay; otherwise only measure, role and label stay.
void changeStorage(CFField& field, CFField::StorageType storage);

/// Whether the number is an integer within 64 bits.
bool isWhole(double number);

/// Converts a number to the form of the storage: an integer for Integer, otherwise a real, if no
/// digit is lost. Other data are unchanged.
CFDatum numberAs(const CFDatum& datum, CFField::StorageType storage);

/// Applies the suitable part of a data model: everything except the storage of each field whose
/// name is in `model` with values of the same kind. Texts never become weights.
void adoptMetadata(Fields& fields, const Fields& model);

} // namespace datafile
