#pragma once

#include <cstdint>
#include <string>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// Constants as SQL whose type does not depend on where they stand: a bare 5 would be a 32-bit
/// integer to the database, and a bare 2.5 a decimal.
SqlExpression sqlConstant(std::int64_t value);
SqlExpression sqlConstant(double value);
SqlExpression sqlConstant(bool value);
SqlExpression sqlConstant(const std::string& text);
SqlExpression sqlNull();

} // namespace EmbeddedHV
