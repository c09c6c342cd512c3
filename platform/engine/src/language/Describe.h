#pragma once

#include <string>

#include "JobError.h"
#include "language/Ast.h"

namespace EmbeddedHV::language {

/// The kind of an expression for messages: "a lambda", "a call of 'round'".
std::string kindOf(const Expression& expression);

/// Throws JobError with a text that begins with "step S, line L, column C: ". `parts` has what the
/// caller knows beyond the step, the position and the text.
[[noreturn]] void failInStep(const char* id, const std::string& step, const Position& position,
                             const std::string& text, FaultParts parts = {});

} // namespace EmbeddedHV::language
