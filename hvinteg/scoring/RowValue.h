#pragma once

#include "CFField.h"
#include "Value.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// An input of a model with the column of the rows that it is read from.
struct InputColumn
{
    unsigned long long column;
    int storage; ///< a storage code of the scoring library
    CFField::StorageType columnStorage;
};

/// Whether the model can be given the column's values: the day of a timestamp as a date, say, but
/// no time of day as a date, and no date as a number, whose origin the model would not know.
bool canRead(const InputColumn& input);

/// Gives the model the value of the row on which the iterator stands. `missing` is the model's
/// number for no value.
void readInput(EmbeddedHV::RowDataIterator& rows, const InputColumn& input, double missing,
               Value& value);
