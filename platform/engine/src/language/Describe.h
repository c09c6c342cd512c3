#pragma once

#include <string>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// The kind of an expression for messages: "a lambda", "a call of 'round'".
std::string kindOf(const Expression& expression);

/// Throws JobError with a text that begins with "step S, line L, column C: ".
[[noreturn]] void failInStep(const char* id, const std::string& step, const Position& position,
                             const std::string& text);

} // namespace EmbeddedHV::language
