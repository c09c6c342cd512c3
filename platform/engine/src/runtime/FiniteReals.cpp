#include "runtime/FiniteReals.h"

#include <duckdb.h>

#include <cmath>
#include <memory>
#include <type_traits>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kFiniteReal = "hv_finite_real";

void takeFiniteReals(duckdb_function_info, duckdb_data_chunk input, duckdb_vector output)
{
    const idx_t rows = duckdb_data_chunk_get_size(input);
    const duckdb_vector column = duckdb_data_chunk_get_vector(input, 0);
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(column));
    std::uint64_t* const validity = duckdb_vector_get_validity(column);
    auto* const results = static_cast<double*>(duckdb_vector_get_data(output));
    for (idx_t row = 0; row < rows; ++row) {
        const bool isPresent = !validity || duckdb_validity_row_is_valid(validity, row);
        results[row] = values[row];
        if (!isPresent || !std::isfinite(values[row]))
            duck::setMissing(output, row);
    }
}

} // namespace

void registerFiniteReals(datafile::duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_scalar_function>,
                          void (*)(duckdb_scalar_function)>
        function(duckdb_create_scalar_function(),
                 [](duckdb_scalar_function made) { duckdb_destroy_scalar_function(&made); });
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    duckdb_scalar_function_set_name(function.get(), kFiniteReal);
    duckdb_scalar_function_add_parameter(function.get(), real.get());
    duckdb_scalar_function_set_return_type(function.get(), real.get());
    duckdb_scalar_function_set_function(function.get(), takeFiniteReals);
    if (duckdb_register_scalar_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not accept a function");
}

std::string finiteReal(const std::string& value)
{
    return std::string(kFiniteReal) + "(" + value + ")";
}

} // namespace EmbeddedHV
