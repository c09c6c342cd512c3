#pragma once

#include <string>

#include "expression/Schema.h"
#include "language/Ast.h"

namespace EmbeddedHV {

/// SQL text with the type of its value. Column names in it are quoted; literals are inlined.
struct SqlExpression
{
    std::string sql;
    ValueType type;
};

/// A lambda's body may use definitions by name.
using language::Definitions;

/// Checks a record lambda (`ctx => x => body`) against the fields of its input, and writes its body
/// as SQL over them. Throws JobError, naming the step, the position, and the field, function or
/// type that is wrong. `step` is the step's name as messages show it.
SqlExpression compileRecordLambda(const language::Expression& lambda, const Schema& input,
                                  const Definitions& definitions, const std::string& step);

/// The same for a lambda whose body is `("F", value)`; `field` receives F. The value is what a
/// field can hold: a boolean has become an Integer, 1 or 0, a bare null a Real, and a Real that is
/// not finite a missing value.
SqlExpression compileFieldLambda(const language::Expression& lambda, const Schema& input,
                                 const Definitions& definitions, const std::string& step,
                                 std::string& field);

} // namespace EmbeddedHV
