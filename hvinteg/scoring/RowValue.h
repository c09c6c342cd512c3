#pragma once

#include "CFField.h"
#include "Value.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// An input of a model and the column of the rows that provides its values.
struct InputColumn
{
    unsigned long long column;
    int storage; ///< a storage code of the scoring library
    CFField::StorageType columnStorage;
};

/// Whether the column's values can be converted for the model. For example, the day of a timestamp
/// is a date, but a time of day is not. A date cannot become a number, because the model would not
/// know its origin.
bool canRead(const InputColumn& input);

/// Converts the input's value of the current row for the model. `missing` is the model's number for
/// a missing value.
void readInput(EmbeddedHV::RowDataIterator& rows, const InputColumn& input, double missing,
               Value& value);
