#pragma once

#include <string>

#include "expression/Schema.h"
#include "language/Ast.h"

namespace EmbeddedHV {

/// SQL text and the type of its value. Column names are quoted; literals are inlined.
struct SqlExpression
{
    std::string sql;
    ValueType type;
};

/// A lambda's body may use definitions by name.
using language::Definitions;

/// Checks a record lambda (`ctx => x => body`) against the fields of its input and compiles its
/// body to SQL over them. `step` is the step's name in messages. Throws JobError that names the
/// step, the position, and the invalid field, function or type.
SqlExpression compileRecordLambda(const language::Expression& lambda, const Schema& input,
                                  const Definitions& definitions, const std::string& step);

/// The same for a lambda with the body `("F", value)`. Sets `field` to F. Converts the value to one
/// that a field can store: a boolean becomes 1 or 0, a null becomes a Real, a Real that is not
/// finite becomes missing.
SqlExpression compileFieldLambda(const language::Expression& lambda, const Schema& input,
                                 const Definitions& definitions, const std::string& step,
                                 std::string& field);

} // namespace EmbeddedHV
