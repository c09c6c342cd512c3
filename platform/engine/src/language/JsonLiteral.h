#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "language/Ast.h"

namespace EmbeddedHV::language {

/// The JSON value of an expression that is a pure literal: objects (members in the order of the
/// text), lists, strings, numbers, booleans, null and negative numbers. A name stands for the
/// literal that it is bound to. Throws JobError, naming the step and the position, for anything
/// else, for a name that leads back to itself, and for a value too large or too deep. `step` is the
/// step's name as messages show it.
nlohmann::ordered_json jsonLiteral(const Expression& expression, const Definitions& definitions,
                                   const std::string& step);

} // namespace EmbeddedHV::language
