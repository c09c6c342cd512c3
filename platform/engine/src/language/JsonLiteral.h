#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// Converts a literal to JSON: objects (members in the order of the text), lists, strings, numbers,
/// negative numbers, booleans and null. A name is replaced by the literal that it is bound to.
/// Throws JobError that names the step and the position for anything else, for a name that refers
/// to itself, and for a value that is too large or too deep. `step` is the step's name in messages.
nlohmann::ordered_json jsonLiteral(const Expression& expression, const Definitions& definitions,
                                   const std::string& step);

} // namespace EmbeddedHV::language
