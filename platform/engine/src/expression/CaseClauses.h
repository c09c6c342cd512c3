#pragma once

#include <optional>
#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// `if (condition) value`, with the position of the condition.
struct CaseClause
{
    Operand condition;
    Operand value;
    Place place;
};

/// Compiles a chain of conditionals to one CASE of any length, because the database limits how
/// deeply CASE may nest. Throws JobError if a condition is not a boolean or the values have no
/// common type.
SqlExpression compileCase(const Dialect& dialect, const std::vector<CaseClause>& clauses,
                          const std::optional<Operand>& otherwise);

} // namespace EmbeddedHV
