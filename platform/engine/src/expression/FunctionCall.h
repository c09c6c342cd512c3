#pragma once

#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// Finds the form of a function that takes the arguments, and writes the call as SQL. Throws
/// JobError for a function that does not exist, for a number or types of arguments that no form
/// takes, and for a wrong pattern.
SqlExpression compileFunctionCall(const std::string& name, const std::vector<Operand>& arguments,
                                  const Place& place);

} // namespace EmbeddedHV
