#pragma once

#include <string>

namespace EmbeddedHV {

/// The type of a value in a job. Each type corresponds to a column type of the dialect.
enum class ValueType
{
    Integer, ///< 64 bits
    Real,    ///< a double
    String,
    Date,
    Time,
    Timestamp,
    Boolean, ///< only inside expressions
    List,    ///< a list of doubles, for coordinates
    Null     ///< the type of a literal null
};

/// SQL text and the type of its value. Column names are quoted; literals are inlined.
struct SqlExpression
{
    std::string sql;
    ValueType type;
    /// If `sql` is an operation in parentheses that the same operator can continue: the operator.
    const char* chain = nullptr;
};

} // namespace EmbeddedHV
