#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"

namespace EmbeddedHV {

/// SQL aggregate functions over reals, made from a class that takes one value after the other.
///
/// `State` is trivially copyable and has:
///  - `void start()`, because the database hands out uninitialised memory;
///  - `void take(double)`, called for each finite value, in no fixed order;
///  - `void merge(const State&)`, which adds the values of another state;
///  - `std::int64_t count`, the number of values.
///
/// Missing, infinite and not-a-number values are ignored. If there are no other values, the result
/// is missing.
template <class State>
class RealAggregate
{
public:
    static_assert(std::is_trivially_copyable_v<State>);

    /// Registers a function for the whole database. `result` computes the value of a state that
    /// has values; not-a-number becomes missing. Throws duck::QueryError.
    template <double (*result)(const State&)>
    static void add(duck::Connection& connection, const char* name)
    {
        const std::unique_ptr<std::remove_pointer_t<duckdb_aggregate_function>,
                              void (*)(duckdb_aggregate_function)>
            function(duckdb_create_aggregate_function(), [](duckdb_aggregate_function made) {
                duckdb_destroy_aggregate_function(&made);
            });
        const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
        duckdb_aggregate_function_set_name(function.get(), name);
        duckdb_aggregate_function_add_parameter(function.get(), real.get());
        duckdb_aggregate_function_set_return_type(function.get(), real.get());
        duckdb_aggregate_function_set_functions(function.get(), sizeOfState, start, takeChunk,
                                                combine, finish<result>);
        if (duckdb_register_aggregate_function(connection.handle(), function.get()) !=
            DuckDBSuccess)
            throw duck::QueryError("the database does not take the function " + std::string(name));
    }

private:
    static State& stateIn(duckdb_aggregate_state state) { return *reinterpret_cast<State*>(state); }

    static idx_t sizeOfState(duckdb_function_info) { return sizeof(State); }

    static void start(duckdb_function_info, duckdb_aggregate_state state)
    {
        stateIn(state).start();
    }

    static void takeChunk(duckdb_function_info, duckdb_data_chunk input,
                          duckdb_aggregate_state* states)
    {
        const idx_t rows = duckdb_data_chunk_get_size(input);
        const duckdb_vector vector = duckdb_data_chunk_get_vector(input, 0);
        const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
        std::uint64_t* const validity = duckdb_vector_get_validity(vector);
        for (idx_t row = 0; row < rows;) {
            // Neighbouring rows mostly belong to the same group, so keep its state in registers.
            const duckdb_aggregate_state place = states[row];
            State state = stateIn(place);
            for (; row < rows && states[row] == place; ++row)
                if ((!validity || duckdb_validity_row_is_valid(validity, row)) &&
                    std::isfinite(values[row]))
                    state.take(values[row]);
            stateIn(place) = state;
        }
    }

    static void combine(duckdb_function_info, duckdb_aggregate_state* sources,
                        duckdb_aggregate_state* targets, idx_t count)
    {
        for (idx_t i = 0; i < count; ++i)
            stateIn(targets[i]).merge(stateIn(sources[i]));
    }

    template <double (*result)(const State&)>
    static void finish(duckdb_function_info, duckdb_aggregate_state* states, duckdb_vector vector,
                       idx_t count, idx_t offset)
    {
        auto* const values = static_cast<double*>(duckdb_vector_get_data(vector));
        for (idx_t i = 0; i < count; ++i) {
            const State& state = stateIn(states[i]);
            const double value =
                state.count > 0 ? result(state) : std::numeric_limits<double>::quiet_NaN();
            values[offset + i] = value;
            if (std::isnan(value))
                duck::setMissing(vector, offset + i);
        }
    }
};

} // namespace EmbeddedHV
