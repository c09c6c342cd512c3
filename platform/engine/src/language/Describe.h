#pragma once

#include <string>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// What kind of thing an expression is, as a message says it: "a lambda", "a call of 'round'".
std::string kindOf(const Expression& expression);

/// Throws JobError whose text begins with "step S, line L, column C: ".
[[noreturn]] void failInStep(const char* id, const std::string& step, const Position& position,
                             const std::string& text);

} // namespace EmbeddedHV::language
