#pragma once

#include "Value.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// An input of a model with the column of the rows that it is read from.
struct InputColumn
{
    unsigned long long column;
    int storage; ///< a storage code of the scoring library
};

/// Gives the model the value of the row on which the iterator stands. `missing` is the model's
/// number for no value.
void readInput(EmbeddedHV::RowDataIterator& rows, const InputColumn& input, double missing,
               Value& value);
