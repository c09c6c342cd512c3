#pragma once

#include <map>
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

/// Definitions that a lambda's body may use by name: values of `val` lines that are expressions.
using Definitions = std::map<std::string, const language::Expression*>;

/// Checks a record lambda (`ctx => x => body`) against the fields of its input, and writes its body
/// as SQL over them. Throws JobError, naming the step, the position, and the field, function or
/// type that is wrong. `step` is the step's name as messages show it.
SqlExpression compileRecordLambda(const language::Expression& lambda, const Schema& input,
                                  const Definitions& definitions, const std::string& step);

/// The same for a lambda whose body is `("F", value)`; `field` receives F.
SqlExpression compileFieldLambda(const language::Expression& lambda, const Schema& input,
                                 const Definitions& definitions, const std::string& step,
                                 std::string& field);

/// `"name"` with quotes doubled, and `'text'` likewise.
std::string quotedIdentifier(const std::string& name);
std::string quotedLiteral(const std::string& text);

} // namespace EmbeddedHV
