#include "runtime/TextFunctions.h"

#include <duckdb.h>

#include <memory>

#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kTextFunction = "hv_text_function";

bool isMissing(duckdb_vector vector, std::size_t row)
{
    std::uint64_t* validity = duckdb_vector_get_validity(vector);
    return validity && !duckdb_validity_row_is_valid(validity, row);
}

/// Calls the function for a chunk. Throws if that fails.
void callChunk(TextFunction& function, duckdb_data_chunk input, duckdb_vector output)
{
    const duckdb_vector column = duckdb_data_chunk_get_vector(input, 1);
    auto* const texts = static_cast<duckdb_string_t*>(duckdb_vector_get_data(column));
    const std::size_t rows = duckdb_data_chunk_get_size(input);
    std::string result;
    for (std::size_t row = 0; row < rows; ++row) {
        if (isMissing(column, row)) {
            duck::setMissing(output, row);
            continue;
        }
        const std::string_view text(duckdb_string_t_data(&texts[row]),
                                    duckdb_string_t_length(texts[row]));
        if (function.call(text, result))
            duckdb_vector_assign_string_element_len(output, row, result.data(), result.size());
        else
            duck::setMissing(output, row);
    }
}

void callFunction(duckdb_function_info info, duckdb_data_chunk input, duckdb_vector output)
{
    if (duckdb_data_chunk_get_size(input) == 0)
        return;
    auto* known = static_cast<TextFunctions*>(duckdb_scalar_function_get_extra_info(info));
    const auto* ids = static_cast<const std::int64_t*>(
        duckdb_vector_get_data(duckdb_data_chunk_get_vector(input, 0)));
    TextFunction* function = known->find(ids[0]);
    if (!function) {
        duckdb_scalar_function_set_error(info, "the function is gone");
        return;
    }
    try {
        callChunk(*function, input, output);
    } catch (const std::exception& error) {
        duckdb_scalar_function_set_error(info, error.what());
    }
    border::handOver(function);
}

} // namespace

void TextFunctions::registerFunction(duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_scalar_function>,
                          void (*)(duckdb_scalar_function)>
        function(duckdb_create_scalar_function(),
                 [](duckdb_scalar_function made) { duckdb_destroy_scalar_function(&made); });
    const duck::LogicalType number(DUCKDB_TYPE_BIGINT);
    const duck::LogicalType text(DUCKDB_TYPE_VARCHAR);
    duckdb_scalar_function_set_name(function.get(), kTextFunction);
    duckdb_scalar_function_add_parameter(function.get(), number.get());
    duckdb_scalar_function_add_parameter(function.get(), text.get());
    duckdb_scalar_function_set_return_type(function.get(), text.get());
    duckdb_scalar_function_set_extra_info(function.get(), this, nullptr);
    // The id is invalid while a statement is only prepared.
    duckdb_scalar_function_set_volatile(function.get());
    duckdb_scalar_function_set_function(function.get(), callFunction);
    if (duckdb_register_scalar_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not accept a function");
}

std::string TextFunctions::call(std::int64_t id, const std::string& column)
{
    return std::string(kTextFunction) + "(" + std::to_string(id) + "::BIGINT, " + column + ")";
}

} // namespace EmbeddedHV
