#pragma once

#include <string>
#include <vector>

#include "hvhost/combine/CombinedInputs.h"

/// A field of the result of append.
struct AppendedField
{
    std::string name;
    CFField::StorageType storage; ///< its type in a file that has values of it
    std::vector<int> columns;     ///< its column in each file; -1 if the file does not have it
};

/// The fields of the result: those of the first file, then those that only later files have. Throws
/// CommandFault (Usage) if a field has types that cannot be appended, or if the files have unlike
/// numbers of fields and `byPosition` is set.
std::vector<AppendedField> appendedFields(const CombinedInputs& inputs, bool byPosition);

/// The names of the fields that a file lacks.
std::vector<std::string> lackingFields(const std::vector<AppendedField>& fields, std::size_t input);
