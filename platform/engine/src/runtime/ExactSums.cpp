#include "runtime/ExactSums.h"

#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include "datafile/DuckFunctions.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

/// The fields of the result.
enum ExactSumField : idx_t
{
    kHighField,
    kLowField,
    kCountField,
    kPartsField ///< bytes of long doubles
};

/// The address of the border between the threads that share states.
constexpr char kExactSumBorder = 0;

/// The database moves a state as bytes, which its members allow.
ExactSum& exactSumIn(duckdb_aggregate_state state)
{
    return *std::launder(reinterpret_cast<ExactSum*>(state));
}

idx_t sizeOfExactSum(duckdb_function_info)
{
    return sizeof(ExactSum);
}

void startExactSum(duckdb_function_info, duckdb_aggregate_state state)
{
    new (state) ExactSum();
}

void destroyExactSums(duckdb_aggregate_state* states, idx_t count)
{
    const border::Call call(&kExactSumBorder);
    for (idx_t i = 0; i < count; ++i)
        std::destroy_at(&exactSumIn(states[i]));
}

void addToExactSums(duckdb_function_info, duckdb_data_chunk input, duckdb_aggregate_state* states)
{
    const border::Call call(&kExactSumBorder);
    const idx_t rows = duckdb_data_chunk_get_size(input);
    const duckdb_vector vector = duckdb_data_chunk_get_vector(input, 0);
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
    std::uint64_t* const validity = duckdb_vector_get_validity(vector);
    for (idx_t row = 0; row < rows; ++row)
        if ((!validity || duckdb_validity_row_is_valid(validity, row)) &&
            std::isfinite(values[row]))
            exactSumIn(states[row]).add(values[row]);
}

void combineExactSums(duckdb_function_info, duckdb_aggregate_state* sources,
                      duckdb_aggregate_state* targets, idx_t count)
{
    const border::Call call(&kExactSumBorder);
    for (idx_t i = 0; i < count; ++i)
        exactSumIn(targets[i]).add(exactSumIn(sources[i]));
}

template <class Value>
Value* fieldData(duckdb_vector structs, ExactSumField field)
{
    return static_cast<Value*>(
        duckdb_vector_get_data(duckdb_struct_vector_get_child(structs, field)));
}

void finishExactSums(duckdb_function_info, duckdb_aggregate_state* states, duckdb_vector result,
                     idx_t count, idx_t offset)
{
    const border::Call call(&kExactSumBorder);
    auto* const highs = fieldData<double>(result, kHighField) + offset;
    auto* const lows = fieldData<double>(result, kLowField) + offset;
    auto* const counts = fieldData<std::int64_t>(result, kCountField) + offset;
    auto* const parts = fieldData<duckdb_string_t>(result, kPartsField) + offset;
    for (idx_t i = 0; i < count; ++i) {
        const ExactSum& sum = exactSumIn(states[i]);
        highs[i] = sum.high();
        lows[i] = sum.low();
        counts[i] = sum.count();
        parts[i] = {};
        if (sum.parts())
            duckdb_vector_assign_string_element_len(
                duckdb_struct_vector_get_child(result, kPartsField), offset + i,
                reinterpret_cast<const char*>(sum.parts()->data()),
                sum.parts()->size() * sizeof(long double));
    }
}

struct TypeDeleter
{
    void operator()(duckdb_logical_type type) const { duckdb_destroy_logical_type(&type); }
};
using OwnedType = std::unique_ptr<std::remove_pointer_t<duckdb_logical_type>, TypeDeleter>;

OwnedType typeOfExactSum()
{
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    const duck::LogicalType integer(DUCKDB_TYPE_BIGINT);
    const duck::LogicalType bytes(DUCKDB_TYPE_BLOB);
    duckdb_logical_type types[] = {real.get(), real.get(), integer.get(), bytes.get()};
    const char* names[] = {"high", "low", "count", "parts"};
    return OwnedType(duckdb_create_struct_type(types, names, std::size(types)));
}

} // namespace

ExactSumReader::ExactSumReader(duckdb_vector column)
    : _highs(fieldData<double>(column, kHighField)), _lows(fieldData<double>(column, kLowField)),
      _counts(fieldData<std::int64_t>(column, kCountField)),
      _parts(fieldData<duckdb_string_t>(column, kPartsField))
{
}

ExactSum ExactSumReader::at(std::size_t row) const
{
    duckdb_string_t bytes = _parts[row];
    ExactSum::Parts parts(duckdb_string_t_length(bytes) / sizeof(long double));
    if (!parts.empty())
        std::memcpy(parts.data(), duckdb_string_t_data(&bytes), parts.size() * sizeof(long double));
    return {_highs[row], _lows[row], _counts[row], std::move(parts)};
}

void registerExactSum(duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_aggregate_function>,
                          void (*)(duckdb_aggregate_function)>
        function(duckdb_create_aggregate_function(),
                 [](duckdb_aggregate_function made) { duckdb_destroy_aggregate_function(&made); });
    const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
    const OwnedType sum = typeOfExactSum();
    duckdb_aggregate_function_set_name(function.get(), kExactSum);
    duckdb_aggregate_function_add_parameter(function.get(), real.get());
    duckdb_aggregate_function_set_return_type(function.get(), sum.get());
    duckdb_aggregate_function_set_functions(function.get(), sizeOfExactSum, startExactSum,
                                            addToExactSums, combineExactSums, finishExactSums);
    duckdb_aggregate_function_set_destructor(function.get(), destroyExactSums);
    if (duckdb_register_aggregate_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not take the function " + std::string(kExactSum));
}

} // namespace EmbeddedHV
