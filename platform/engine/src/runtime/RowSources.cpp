#include "runtime/RowSources.h"

#include <duckdb.h>

#include <memory>
#include <vector>

#include "DataFileNames.h"
#include "datafile/ColumnTypes.h"
#include "datafile/Duck.h"
#include "datafile/DuckFunctions.h"
#include "runtime/RecordSource.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kRowsFunction = "hv_rows";

/// The state of one scan: the number of the source, and the fields that the statement uses.
struct Scan
{
    std::int64_t id = 0;
    std::vector<std::size_t> fields;
};

/// The database owns the object and calls this to delete it.
template <class T>
void destroy(void* object)
{
    border::takeOver(object);
    delete static_cast<T*>(object);
}

struct ValueDeleter
{
    void operator()(duckdb_value value) const { duckdb_destroy_value(&value); }
};
using Value = std::unique_ptr<std::remove_pointer_t<duckdb_value>, ValueDeleter>;

void bind(duckdb_bind_info info)
{
    auto* sources = static_cast<RowSources*>(duckdb_bind_get_extra_info(info));
    const Value parameter(duckdb_bind_get_parameter(info, 0));
    auto scan = std::make_unique<Scan>();
    scan->id = duckdb_get_int64(parameter.get());
    const RecordSource* source = sources->find(scan->id);
    if (!source) {
        duckdb_bind_set_error(info, "the source is gone");
        return;
    }
    for (const CFField& field : source->fields())
        duckdb_bind_add_result_column(info, field.GetName().c_str(),
                                      duck::LogicalType(columnTypeOf(field.GetStorage())).get());
    border::handOver(scan.get());
    duckdb_bind_set_bind_data(info, scan.release(), destroy<Scan>);
}

void init(duckdb_init_info info)
{
    const auto* bound = static_cast<const Scan*>(duckdb_init_get_bind_data(info));
    const border::Call call(bound);
    auto scan = std::make_unique<Scan>(*bound);
    const idx_t count = duckdb_init_get_column_count(info);
    for (idx_t i = 0; i < count; ++i)
        scan->fields.push_back(duckdb_init_get_column_index(info, i));
    auto* sources = static_cast<RowSources*>(duckdb_init_get_extra_info(info));
    if (RecordSource* source = sources->find(scan->id))
        source->begin(scan->fields);
    // The row protocol has only one current record.
    duckdb_init_set_max_threads(info, 1);
    border::handOver(scan.get());
    duckdb_init_set_init_data(info, scan.release(), destroy<Scan>);
}

void scan(duckdb_function_info info, duckdb_data_chunk chunk)
{
    auto* sources = static_cast<RowSources*>(duckdb_function_get_extra_info(info));
    const auto* state = static_cast<const Scan*>(duckdb_function_get_init_data(info));
    const border::Call call(state);
    RecordSource* source = sources->find(state->id);
    if (!source || !source->fill(chunk, state->fields))
        duckdb_function_set_error(info, "the source failed");
}

} // namespace

void RowSources::registerFunction(duck::Connection& connection)
{
    const std::unique_ptr<std::remove_pointer_t<duckdb_table_function>,
                          void (*)(duckdb_table_function)>
        function(duckdb_create_table_function(),
                 [](duckdb_table_function made) { duckdb_destroy_table_function(&made); });
    duckdb_table_function_set_name(function.get(), kRowsFunction);
    duckdb_table_function_add_parameter(function.get(),
                                        duck::LogicalType(DUCKDB_TYPE_BIGINT).get());
    duckdb_table_function_set_extra_info(function.get(), this, nullptr);
    duckdb_table_function_set_bind(function.get(), bind);
    duckdb_table_function_set_init(function.get(), init);
    duckdb_table_function_set_function(function.get(), scan);
    duckdb_table_function_supports_projection_pushdown(function.get(), true);
    if (duckdb_register_table_function(connection.handle(), function.get()) != DuckDBSuccess)
        throw duck::QueryError("the database takes no table function");
}

std::string RowSources::tableOf(std::int64_t id)
{
    return std::string(kRowsFunction) + "(" + std::to_string(id) + "::BIGINT)";
}

} // namespace EmbeddedHV
