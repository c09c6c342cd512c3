#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "expression/Expression.h"

namespace scoring {

/// Parses a finite number. Blanks around it are allowed. Allocates nothing.
std::optional<double> parseNumber(std::string_view text);
/// Parses a value of a kind; empty if the text is invalid. A text cell borrows the text. Allocates
/// nothing.
std::optional<Cell> parseCell(std::string_view text, ValueKind kind);

/// Makes a constant of a kind. Throws ModelFault if the text is not a value of the kind.
ExpressionPtr constantOf(const std::string& text, ValueKind kind, bool isTyped = true);
/// Makes a constant without a type: a number if the text is a number, else a text.
ExpressionPtr inferredConstant(const std::string& text);
ExpressionPtr missingConstant(ValueKind kind);

} // namespace scoring
