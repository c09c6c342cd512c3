#include "runtime/NumberedFunction.h"

#include <memory>
#include <type_traits>

#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"

namespace EmbeddedHV {

void registerNumberedFunction(duck::Connection& connection, const NumberedFunction& function)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_scalar_function>,
                          void (*)(duckdb_scalar_function)>
        made(duckdb_create_scalar_function(),
             [](duckdb_scalar_function created) { duckdb_destroy_scalar_function(&created); });
    const duck::LogicalType number(DUCKDB_TYPE_BIGINT);
    const duck::LogicalType value(function.type);
    duckdb_scalar_function_set_name(made.get(), function.name);
    duckdb_scalar_function_add_parameter(made.get(), number.get());
    duckdb_scalar_function_add_parameter(made.get(), value.get());
    duckdb_scalar_function_set_return_type(made.get(), value.get());
    duckdb_scalar_function_set_extra_info(made.get(), function.objects, nullptr);
    // The id is invalid while a statement is only prepared, and the database must not evaluate the
    // function twice for a row.
    duckdb_scalar_function_set_volatile(made.get());
    duckdb_scalar_function_set_function(made.get(), function.call);
    if (duckdb_register_scalar_function(connection.handle(), made.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not accept a function");
}

} // namespace EmbeddedHV
