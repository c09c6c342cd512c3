#pragma once

#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// Finds the form of a function that accepts the arguments, and compiles the call to SQL. Throws
/// JobError for an unknown function, for arguments that no form accepts, and for an invalid
/// pattern.
SqlExpression compileFunctionCall(const Dialect& dialect, const std::string& name,
                                  const std::vector<Operand>& arguments, const Place& place);

} // namespace EmbeddedHV
