#pragma once

#include <optional>
#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// `if (condition) value`, with the place of the condition.
struct CaseClause
{
    Operand condition;
    Operand value;
    Place place;
};

/// Writes a chain of conditionals as one CASE, however long: the database bounds how deep they may
/// nest. Throws JobError if a condition is no boolean, or if the values have no common type.
SqlExpression compileCase(const std::vector<CaseClause>& clauses,
                          const std::optional<Operand>& otherwise);

} // namespace EmbeddedHV
