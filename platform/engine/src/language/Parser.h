#pragma once

#include <string_view>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// Parses a job text by the grammar of docs/hvl.md. Throws JobError for a syntax error, with the
/// line, the column, what was expected and what was found. Safe for arbitrary bytes: the time and
/// the nesting depth are bounded.
Program parseProgram(std::string_view text);

/// The values that the program's definitions bind. Chains are left out.
Definitions boundValues(const Program& program);

/// Parses one expression. The expression must fill the text.
ExpressionPtr parseExpression(std::string_view text);

} // namespace EmbeddedHV::language
