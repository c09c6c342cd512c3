#pragma once

#include <string>
#include <vector>

namespace EmbeddedHV {

/// The type of a value in a job. Each type corresponds to a column type of the database.
enum class ValueType
{
    Integer,   ///< BIGINT
    Real,      ///< DOUBLE
    String,    ///< VARCHAR
    Date,      ///< DATE
    Time,      ///< TIME
    Timestamp, ///< TIMESTAMP
    Boolean,   ///< BOOLEAN, only inside expressions
    List,      ///< a list of doubles, for coordinates
    Null       ///< the type of a literal null
};

/// A field of a relation, and the type of its values in expressions.
struct Column
{
    std::string name;
    ValueType type = ValueType::Real;
};

/// The fields of a relation, in order. Names are unique and compared byte by byte.
using Schema = std::vector<Column>;

} // namespace EmbeddedHV
