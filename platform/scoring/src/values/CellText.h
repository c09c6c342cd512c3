#pragma once

#include <optional>
#include <string_view>

#include "values/Cell.h"

namespace scoring {

/// Parses a finite number. Blanks around it are allowed. Allocates nothing.
std::optional<double> parseNumber(std::string_view text);
/// Parses a value of a kind; empty if the text is invalid. A text cell borrows the text. Allocates
/// nothing.
std::optional<Cell> parseCell(std::string_view text, ValueKind kind);

} // namespace scoring
