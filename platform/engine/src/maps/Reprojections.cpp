#include "maps/Reprojections.h"

#include <duckdb.h>

#include <memory>

#include "ErrorIds.h"
#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"
#include "datafile/RaisedFault.h"
#include "maps/Reprojection.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kFunction = "hv_reproject";
constexpr std::size_t kShownBytes = 60; // of an invalid shape, in a message

bool isMissing(duckdb_vector vector, std::size_t row)
{
    std::uint64_t* validity = duckdb_vector_get_validity(vector);
    return validity && !duckdb_validity_row_is_valid(validity, row);
}

std::string notAShape(std::string_view text)
{
    return raisedText(errors::kNotAShape, "reprojection: a value is no shape: \"" +
                                              std::string(text.substr(0, kShownBytes)) + "\"");
}

/// Transforms the shapes of a chunk. Throws if that fails.
void moveChunk(Reprojection& reprojection, duckdb_function_info info, duckdb_data_chunk input,
               duckdb_vector output)
{
    const duckdb_vector column = duckdb_data_chunk_get_vector(input, 1);
    auto* const texts = static_cast<duckdb_string_t*>(duckdb_vector_get_data(column));
    const std::size_t rows = duckdb_data_chunk_get_size(input);
    std::string moved;
    for (std::size_t row = 0; row < rows; ++row) {
        if (isMissing(column, row)) {
            duck::setMissing(output, row);
            continue;
        }
        const std::string_view text(duckdb_string_t_data(&texts[row]),
                                    duckdb_string_t_length(texts[row]));
        switch (reprojection.move(text, moved)) {
        case maps::MovedShape::Moved:
            duckdb_vector_assign_string_element_len(output, row, moved.data(), moved.size());
            break;
        case maps::MovedShape::Lost:
            duck::setMissing(output, row);
            break;
        case maps::MovedShape::NotAShape:
            duckdb_scalar_function_set_error(info, notAShape(text).c_str());
            return;
        }
    }
}

void reproject(duckdb_function_info info, duckdb_data_chunk input, duckdb_vector output)
{
    if (duckdb_data_chunk_get_size(input) == 0)
        return;
    auto* known = static_cast<Reprojections*>(duckdb_scalar_function_get_extra_info(info));
    const auto* ids = static_cast<const std::int64_t*>(
        duckdb_vector_get_data(duckdb_data_chunk_get_vector(input, 0)));
    Reprojection* reprojection = known->find(ids[0]);
    if (!reprojection) {
        duckdb_scalar_function_set_error(info, "the reprojection is gone");
        return;
    }
    try {
        moveChunk(*reprojection, info, input, output);
    } catch (const std::exception& error) {
        duckdb_scalar_function_set_error(info, error.what());
    }
    border::handOver(reprojection);
}

} // namespace

void Reprojections::registerFunction(duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_scalar_function>,
                          void (*)(duckdb_scalar_function)>
        function(duckdb_create_scalar_function(),
                 [](duckdb_scalar_function made) { duckdb_destroy_scalar_function(&made); });
    const duck::LogicalType number(DUCKDB_TYPE_BIGINT);
    const duck::LogicalType text(DUCKDB_TYPE_VARCHAR);
    duckdb_scalar_function_set_name(function.get(), kFunction);
    duckdb_scalar_function_add_parameter(function.get(), number.get());
    duckdb_scalar_function_add_parameter(function.get(), text.get());
    duckdb_scalar_function_set_return_type(function.get(), text.get());
    duckdb_scalar_function_set_extra_info(function.get(), this, nullptr);
    // The id is invalid while a statement is only prepared.
    duckdb_scalar_function_set_volatile(function.get());
    duckdb_scalar_function_set_function(function.get(), reproject);
    if (duckdb_register_scalar_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database does not accept a function");
}

std::string Reprojections::call(std::int64_t id, const std::string& column)
{
    return std::string(kFunction) + "(" + std::to_string(id) + "::BIGINT, " + column + ")";
}

} // namespace EmbeddedHV
