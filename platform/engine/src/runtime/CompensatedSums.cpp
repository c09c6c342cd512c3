#include "runtime/CompensatedSums.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "DataFileNames.h"
#include "datafile/DuckFunctions.h"

namespace EmbeddedHV {
namespace {

struct RealSum
{
    double sum;
    double rest; ///< the rounding errors of the additions to `sum`
    double least;
    double greatest;
    std::int64_t count;

    void add(double value)
    {
        const double total = sum + value;
        const double added = total - sum;
        rest += (sum - (total - added)) + (value - added);
        sum = total;
    }
    void take(double value)
    {
        add(value);
        least = std::min(least, value);
        greatest = std::max(greatest, value);
        ++count;
    }
};

constexpr RealSum kNothing = {0, 0, std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(), 0};

RealSum& sumIn(duckdb_aggregate_state state)
{
    return *reinterpret_cast<RealSum*>(state);
}

idx_t sizeOfState(duckdb_function_info)
{
    return sizeof(RealSum);
}

void start(duckdb_function_info, duckdb_aggregate_state state)
{
    sumIn(state) = kNothing;
}

void takeChunk(duckdb_function_info, duckdb_data_chunk input, duckdb_aggregate_state* states)
{
    const idx_t rows = duckdb_data_chunk_get_size(input);
    const duckdb_vector vector = duckdb_data_chunk_get_vector(input, 0);
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
    std::uint64_t* const validity = duckdb_vector_get_validity(vector);
    for (idx_t row = 0; row < rows;) {
        // Neighbouring rows mostly belong to the same group, so keep its sum in registers.
        const duckdb_aggregate_state state = states[row];
        RealSum sum = sumIn(state);
        for (; row < rows && states[row] == state; ++row)
            if ((!validity || duckdb_validity_row_is_valid(validity, row)) &&
                std::isfinite(values[row]))
                sum.take(values[row]);
        sumIn(state) = sum;
    }
}

void combine(duckdb_function_info, duckdb_aggregate_state* sources, duckdb_aggregate_state* targets,
             idx_t count)
{
    for (idx_t i = 0; i < count; ++i) {
        const RealSum& source = sumIn(sources[i]);
        RealSum& target = sumIn(targets[i]);
        target.add(source.sum);
        target.rest += source.rest;
        target.least = std::min(target.least, source.least);
        target.greatest = std::max(target.greatest, source.greatest);
        target.count += source.count;
    }
}

double sumOf(const RealSum& sum)
{
    const double whole = sum.sum + sum.rest;
    // If the sum overflows, the rest is meaningless.
    return std::isfinite(whole) ? whole : sum.sum;
}

double meanOf(const RealSum& sum)
{
    const auto count = static_cast<double>(sum.count);
    const double mean = sum.sum / count + sum.rest / count;
    return std::max(sum.least, std::min(sum.greatest, mean));
}

/// `valueOf` computes the result of a state that has values. A result that is not a number becomes
/// missing.
template <class ValueOf>
void finish(duckdb_aggregate_state* states, duckdb_vector result, idx_t count, idx_t offset,
            ValueOf valueOf)
{
    auto* const values = static_cast<double*>(duckdb_vector_get_data(result));
    for (idx_t i = 0; i < count; ++i) {
        const RealSum& sum = sumIn(states[i]);
        const double value =
            sum.count > 0 ? valueOf(sum) : std::numeric_limits<double>::quiet_NaN();
        values[offset + i] = value;
        if (!std::isnan(value))
            continue;
        duckdb_vector_ensure_validity_writable(result);
        duckdb_validity_set_row_invalid(duckdb_vector_get_validity(result), offset + i);
    }
}

void finishSum(duckdb_function_info, duckdb_aggregate_state* states, duckdb_vector result,
               idx_t count, idx_t offset)
{
    finish(states, result, count, offset, sumOf);
}

void finishMean(duckdb_function_info, duckdb_aggregate_state* states, duckdb_vector result,
                idx_t count, idx_t offset)
{
    finish(states, result, count, offset, [](const RealSum& sum) {
        return std::isfinite(sum.sum) ? meanOf(sum) : std::numeric_limits<double>::quiet_NaN();
    });
}

void registerAggregate(duck::Connection& connection, const char* name,
                       duckdb_aggregate_finalize_t finalize)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_aggregate_function>,
                          void (*)(duckdb_aggregate_function)>
        function(duckdb_create_aggregate_function(),
                 [](duckdb_aggregate_function made) { duckdb_destroy_aggregate_function(&made); });
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    duckdb_aggregate_function_set_name(function.get(), name);
    duckdb_aggregate_function_add_parameter(function.get(), real.get());
    duckdb_aggregate_function_set_return_type(function.get(), real.get());
    duckdb_aggregate_function_set_functions(function.get(), sizeOfState, start, takeChunk, combine,
                                            finalize);
    if (duckdb_register_aggregate_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not take the function " + std::string(name));
}

} // namespace

void registerCompensatedSums(duck::Connection& connection)
{
    registerAggregate(connection, kRealSum, finishSum);
    registerAggregate(connection, kRealMean, finishMean);
}

} // namespace EmbeddedHV
