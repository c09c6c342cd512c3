#pragma once

#include <string_view>
#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// Finds the form of a function that accepts the arguments, and compiles the call to SQL. Throws
/// JobError for an unknown function, for arguments that no form accepts, and for an invalid
/// pattern.
SqlExpression compileFunctionCall(const Dialect& dialect, const std::string& name,
                                  const std::vector<Operand>& arguments, const Place& place);

/// The SQL of a form that exists and raises no error, with SQL as its arguments.
std::string functionSql(const Dialect& dialect, std::string_view name, std::string_view parameters,
                        const std::vector<std::string>& arguments);

} // namespace EmbeddedHV
