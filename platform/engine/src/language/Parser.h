#pragma once

#include <string_view>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// Reads a job text by the grammar of docs/hvl.md. Throws JobError with the id of a syntax error,
/// the line and column, what was found and what was expected; never crashes or runs long on any
/// bytes, and bounds the nesting.
Program parseProgram(std::string_view text);

/// What the program's definitions bind, chains left out.
Definitions boundValues(const Program& program);

/// Reads one expression that fills the text.
ExpressionPtr parseExpression(std::string_view text);

} // namespace EmbeddedHV::language
