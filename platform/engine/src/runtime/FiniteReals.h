#pragma once

#include <string>

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

/// Registers the function of finiteReal with the database. Call it once. Throws duck::QueryError.
void registerFiniteReals(datafile::duck::Connection& connection);

/// SQL for the value, or a missing value if it is infinite or not a number. `value` is SQL for a
/// real. It occurs only once in the result: the database hashes an expression with a column twice
/// like the same expression of any other column, so statements on thousands of columns would be
/// planned in quadratic time.
std::string finiteReal(const std::string& value);

} // namespace EmbeddedHV
