#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "expression/Expression.h"

namespace scoring {

/// A finite number, blanks around it apart. Allocates nothing.
std::optional<double> parseNumber(std::string_view text);
/// A value of a kind, from its text in a model or a row; nothing for a text that is none. A text
/// cell borrows the text. Allocates nothing.
std::optional<Cell> parseCell(std::string_view text, ValueKind kind);

/// A constant of a kind. Throws ModelFault for a text that is none of it.
ExpressionPtr constantOf(const std::string& text, ValueKind kind, bool isTyped = true);
/// A constant without a type: a number if it can be read as one, else a text.
ExpressionPtr inferredConstant(const std::string& text);
ExpressionPtr missingConstant(ValueKind kind);

} // namespace scoring
