#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialect/DateTimePattern.h"
#include "dialect/ValueType.h"
#include "functions/FunctionTable.h"

namespace EmbeddedHV {

/// How a backend writes names, literals, types and expressions in its SQL. Code above it writes
/// only SQL that all backends share. Has no state; any thread.
class Dialect
{
public:
    virtual ~Dialect() = default;

    /// A quoted name of a column or a table. Any text is one name.
    virtual std::string name(const std::string& name) const = 0;
    /// A string as a literal. No text can end the literal early.
    virtual std::string literal(const std::string& text) const = 0;
    /// A literal of type Integer.
    virtual std::string literal(std::int64_t value) const = 0;
    /// A literal of type Real that gives the same double back.
    virtual std::string literal(double value) const = 0;
    /// The name of a type. A null without a context is a Real.
    virtual const char* typeName(ValueType type) const = 0;

    /// The SQL of a form of a function. `form` is an element of kFunctions. $1 to $9 are the
    /// arguments, $* is all of them, and $where is the beginning of an error message, as a string.
    /// An argument needs no parentheses, and the result needs none.
    virtual std::string_view function(const Function& form) const = 0;
    /// The literal of a pattern, as an argument of `function`.
    virtual std::string pattern(const DateTimePattern& pattern) const = 0;

    /// The remainder of two Integers. The divisor is not 0.
    virtual std::string remainder(const std::string& left, const std::string& right) const = 0;
    /// A power of Reals. A result that is not a number is missing.
    virtual std::string power(const std::string& base, const std::string& exponent) const = 0;
    /// A list of Reals. `elements` are separated by commas.
    virtual std::string list(const std::string& elements) const = 0;
    /// A Real, or missing if it is infinite or not a number.
    virtual std::string finiteReal(const std::string& value) const = 0;

    /// The expression as SQL of the type, to which it must be convertible.
    std::string as(const SqlExpression& expression, ValueType type) const
    {
        return expression.type == type ? expression.sql : cast(expression.sql, type);
    }
    std::string cast(const std::string& value, ValueType type) const
    {
        return "CAST(" + value + " AS " + typeName(type) + ")";
    }
};

} // namespace EmbeddedHV
