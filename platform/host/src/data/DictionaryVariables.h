#pragma once

#include <vector>

#include "CFField.h"
#include "VexaVariable.h"
#include "datafile/Dictionary.h"

/// Conversions between the dictionary of a SAV file and the host's variables, which have texts in
/// the host's encoding and dates on the host's scale.

/// The default print format for a storage, the reverse of storageOfFormat. `width` is the width of
/// a text.
VEXA_Format formatOfStorage(CFField::StorageType storage, int width);

/// `storage` is the column's storage, which determines the scale of the dictionary's values.
/// `width` is a text's width in the host's encoding.
VEXA_Variable variableOf(const datafile::DictionaryVariable& described,
                         CFField::StorageType storage, int width);
datafile::DictionaryVariable descriptionOf(const VEXA_Variable& variable,
                                           CFField::StorageType storage);
/// Appends numbers to names that repeat an earlier one, ignoring letter case: an encoding without
/// some letters can make two names equal.
void tellNamesApart(std::vector<VEXA_Variable>& variables);
