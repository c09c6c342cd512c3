#pragma once

#include "expression/Operand.h"

namespace EmbeddedHV {

/// Compiles an operator with one operand. Throws JobError if the operand has the wrong type.
SqlExpression compileUnary(const Dialect& dialect, language::UnaryOperator op,
                           const Operand& operand, const Place& place);
/// Compiles an operator with two operands. Throws JobError if the operands have the wrong types.
SqlExpression compileBinary(const Dialect& dialect, language::BinaryOperator op,
                            const Operand& left, const Operand& right, const Place& place);

} // namespace EmbeddedHV
