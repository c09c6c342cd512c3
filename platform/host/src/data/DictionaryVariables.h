#pragma once

#include <vector>

#include "CFField.h"
#include "VexaVariable.h"
#include "datafile/Dictionary.h"

/// The dictionary of a SAV file and the host's variables, which hold texts in the host's encoding
/// and dates on the host's scale.

/// The kind of column that holds the values of a print format.
CFField::StorageType storageOfFormat(const VEXA_Format& format);
/// A print format for values of a kind; a text's width is its width.
VEXA_Format formatOfStorage(CFField::StorageType storage, int width);

/// `storage` is the kind of the column that the variable stands for, `width` how wide it is in the
/// host's encoding.
VEXA_Variable variableOf(const datafile::DictionaryVariable& described,
                         CFField::StorageType storage, int width);
datafile::DictionaryVariable descriptionOf(const VEXA_Variable& variable);
