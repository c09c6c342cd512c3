#pragma once

#include <string>

#include "expression/Expression.h"

namespace scoring {

/// Makes a constant of a kind. Throws ModelFault if the text is not a value of the kind.
ExpressionPtr constantOf(const std::string& text, ValueKind kind, bool isTyped = true);
/// Makes a constant without a type: a number if the text is a number, else a text.
ExpressionPtr inferredConstant(const std::string& text);
ExpressionPtr missingConstant(ValueKind kind);

} // namespace scoring
