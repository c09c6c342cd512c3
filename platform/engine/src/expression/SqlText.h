#pragma once

#include <cstdint>
#include <string>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// Constants as SQL with a definite type. The database would read a plain 5 as a 32-bit integer and
/// a plain 2.5 as a decimal.
SqlExpression sqlConstant(std::int64_t value);
SqlExpression sqlConstant(double value);
SqlExpression sqlConstant(bool value);
SqlExpression sqlConstant(const std::string& text);
SqlExpression sqlNull();

} // namespace EmbeddedHV
