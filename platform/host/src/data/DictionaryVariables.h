#pragma once

#include <vector>

#include "CFField.h"
#include "VexaVariable.h"
#include "datafile/Dictionary.h"

/// The dictionary of a SAV file and the host's variables, which hold texts in the host's encoding
/// and dates on the host's scale.

/// A print format for values of a kind, storageOfFormat the other way round; a text's width is its
/// width.
VEXA_Format formatOfStorage(CFField::StorageType storage, int width);

/// `storage` is the kind of the column that the variable stands for: the dictionary's values are on
/// its scale. `width` is how wide a text is in the host's encoding.
VEXA_Variable variableOf(const datafile::DictionaryVariable& described,
                         CFField::StorageType storage, int width);
datafile::DictionaryVariable descriptionOf(const VEXA_Variable& variable,
                                           CFField::StorageType storage);
/// Numbers the names that repeat one before them, letter case apart: an encoding that lacks letters
/// makes one name of two.
void tellNamesApart(std::vector<VEXA_Variable>& variables);
