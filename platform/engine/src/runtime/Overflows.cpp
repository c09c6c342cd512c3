#include "runtime/Overflows.h"

#include <duckdb.h>

#include <cmath>

#include "datafile/DuckFunctions.h"
#include "runtime/NumberedFunction.h"
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
    registerNumberedFunction(connection, {kFiniteFunction, DUCKDB_TYPE_DOUBLE, takeFinite, this});
}

std::string Overflows::call(std::int64_t id, const std::string& value)
{
    return std::string(kFiniteFunction) + "(" + std::to_string(id) + "::BIGINT, " + value + ")";
}

} // namespace EmbeddedHV
