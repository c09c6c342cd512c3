#pragma once

#include <set>
#include <string>

#include "dialect/Dialect.h"
#include "expression/Schema.h"
#include "language/Ast.h"

namespace EmbeddedHV {

/// A lambda's body may use definitions by name.
using language::Definitions;

/// The surroundings of a lambda. Borrows all members.
struct LambdaContext
{
    const Dialect& dialect;
    const Schema& input; ///< the fields of the record
    const Definitions& definitions;
    const std::string& step;                     ///< the step's name, for messages
    std::set<std::string>* fieldsRead = nullptr; ///< gets the fields that the lambda reads
};

/// Checks a record lambda (`ctx => x => body`) against the fields of its input and compiles its
/// body to SQL over them. Throws JobError that names the step, the position, and the invalid field,
/// function or type.
SqlExpression compileRecordLambda(const language::Expression& lambda, const LambdaContext& context);

/// The same for a lambda with the body `("F", value)`. Sets `field` to F. Converts the value to one
/// that a field can store: a boolean becomes 1 or 0, a null becomes a Real, a Real that is not
/// finite becomes missing.
SqlExpression compileFieldLambda(const language::Expression& lambda, const LambdaContext& context,
                                 std::string& field);

} // namespace EmbeddedHV
