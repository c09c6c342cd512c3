#include "runtime/Overflows.h"

#include <duckdb.h>

#include <cmath>
#include <memory>
#include <type_traits>

#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kFiniteFunction = "hv_finite";

void takeFinite(duckdb_function_info info, duckdb_data_chunk input, duckdb_vector output)
{
    const idx_t rows = duckdb_data_chunk_get_size(input);
    if (rows == 0)
        return;
    auto* const known = static_cast<Overflows*>(duckdb_scalar_function_get_extra_info(info));
    const auto* const ids = static_cast<const std::int64_t*>(
        duckdb_vector_get_data(duckdb_data_chunk_get_vector(input, 0)));
    const duckdb_vector column = duckdb_data_chunk_get_vector(input, 1);
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(column));
    std::uint64_t* const validity = duckdb_vector_get_validity(column);
    auto* const results = static_cast<double*>(duckdb_vector_get_data(output));
    std::uint64_t infinite = 0;
    for (idx_t row = 0; row < rows; ++row) {
        const bool isPresent = !validity || duckdb_validity_row_is_valid(validity, row);
        results[row] = values[row];
        if (isPresent && !std::isinf(values[row]))
            continue;
        duck::setMissing(output, row);
        infinite += isPresent ? 1 : 0;
    }
    if (infinite == 0)
        return;
    if (OverflowCount* const count = known->find(ids[0])) {
        *count += infinite;
        border::handOver(count);
    }
}

} // namespace

void Overflows::registerFunction(duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_scalar_function>,
                          void (*)(duckdb_scalar_function)>
        function(duckdb_create_scalar_function(),
                 [](duckdb_scalar_function made) { duckdb_destroy_scalar_function(&made); });
    const duck::LogicalType number(DUCKDB_TYPE_BIGINT);
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    duckdb_scalar_function_set_name(function.get(), kFiniteFunction);
    duckdb_scalar_function_add_parameter(function.get(), number.get());
    duckdb_scalar_function_add_parameter(function.get(), real.get());
    duckdb_scalar_function_set_return_type(function.get(), real.get());
    duckdb_scalar_function_set_extra_info(function.get(), this, nullptr);
    // The database must not evaluate it twice for a row, or while a statement is only prepared.
    duckdb_scalar_function_set_volatile(function.get());
    duckdb_scalar_function_set_function(function.get(), takeFinite);
    if (duckdb_register_scalar_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not accept a function");
}

std::string Overflows::call(std::int64_t id, const std::string& value)
{
    return std::string(kFiniteFunction) + "(" + std::to_string(id) + "::BIGINT, " + value + ")";
}

} // namespace EmbeddedHV
