#pragma once

#include <duckdb.h>

#include "DataFileNames.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

/// A function of the database with two arguments: the id of a NumberedObject, and a value. The
/// result has the type of the value.
struct NumberedFunction
{
    const char* name;
    duckdb_type type; ///< of the value and the result
    duckdb_scalar_function_t call;
    void* objects; ///< borrowed; `call` receives it as the extra info of the function
};

/// Registers the function. Call it once for each name. Throws duck::QueryError.
void registerNumberedFunction(duck::Connection& connection, const NumberedFunction& function);

} // namespace EmbeddedHV
