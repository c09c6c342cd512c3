#pragma once

#include <string>
#include <vector>

namespace EmbeddedHV {

/// What a value is while a job runs; each stands for one column type of the database.
enum class ValueType
{
    Integer,   ///< BIGINT
    Real,      ///< DOUBLE
    String,    ///< VARCHAR
    Date,      ///< DATE
    Time,      ///< TIME
    Timestamp, ///< TIMESTAMP
    Boolean,   ///< BOOLEAN, inside expressions only
    List,      ///< a list of doubles, as coordinates are
    Null       ///< the type of a bare null
};

/// A field of a relation and the type of its values, which expressions are checked against.
struct Column
{
    std::string name;
    ValueType type = ValueType::Real;
};

/// The fields of a relation, in order. Names are unique and compared byte by byte.
using Schema = std::vector<Column>;

} // namespace EmbeddedHV
