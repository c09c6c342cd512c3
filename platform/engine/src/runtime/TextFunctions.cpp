#include "runtime/TextFunctions.h"

#include <duckdb.h>

#include "datafile/DuckFunctions.h"
#include "runtime/NumberedFunction.h"
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
    registerNumberedFunction(connection, {kTextFunction, DUCKDB_TYPE_VARCHAR, callFunction, this});
}

std::string TextFunctions::call(std::int64_t id, const std::string& column)
{
    return std::string(kTextFunction) + "(" + std::to_string(id) + "::BIGINT, " + column + ")";
}

} // namespace EmbeddedHV
