#pragma once

#include "expression/Operand.h"

namespace EmbeddedHV {

/// Operators over compiled operands. They check the types and throw JobError where those are wrong.
SqlExpression compileUnary(language::UnaryOperator op, const Operand& operand, const Place& place);
SqlExpression compileBinary(language::BinaryOperator op, const Operand& left, const Operand& right,
                            const Place& place);

} // namespace EmbeddedHV
