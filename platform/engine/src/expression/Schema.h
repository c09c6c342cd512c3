#pragma once

#include <string>
#include <vector>

#include "dialect/ValueType.h"

namespace EmbeddedHV {

/// A field of a relation, and the type of its values in expressions.
struct Column
{
    std::string name;
    ValueType type = ValueType::Real;
};

/// The fields of a relation, in order. Names are unique and compared byte by byte.
using Schema = std::vector<Column>;

} // namespace EmbeddedHV
