#include "datafile/Duck.h"

#include <cmath>
#include <exception>
#include <memory>
#include <string_view>

namespace datafile::duck {
namespace {

/// Prevents loading from outside: all that the engine needs is linked in.
constexpr std::pair<const char*, const char*> kOpenOptions[] = {
    {"autoinstall_known_extensions", "false"},
    {"autoload_known_extensions", "false"},
    {"allow_unsigned_extensions", "false"},
};

} // namespace

bool QueryError::interrupted() const
{
    return std::string_view(what()).find("INTERRUPT") != std::string_view::npos;
}

duckdb_database openInMemory(const std::vector<std::pair<std::string, std::string>>& options)
{
    duckdb_config config = nullptr;
    if (duckdb_create_config(&config) != DuckDBSuccess)
        throw QueryError("the database takes no configuration");
    for (const auto& [name, value] : kOpenOptions)
        duckdb_set_config(config, name, value);
    for (const auto& [name, value] : options)
        duckdb_set_config(config, name.c_str(), value.c_str());
    duckdb_database database = nullptr;
    char* reason = nullptr;
    const auto state = duckdb_open_ext(nullptr, &database, config, &reason);
    duckdb_destroy_config(&config);
    const std::string text = reason ? reason : "";
    duckdb_free(reason);
    if (state != DuckDBSuccess)
        throw QueryError("the database does not open: " + text);
    return database;
}

Result& Result::operator=(Result&& other) noexcept
{
    std::swap(_result, other._result);
    return *this;
}

std::string Result::text(std::size_t column, std::size_t row)
{
    return bytes(column, row);
}

std::string Result::bytes(std::size_t column, std::size_t row)
{
    const duckdb_string value = duckdb_value_string(&_result, column, row);
    const std::unique_ptr<char, decltype(&duckdb_free)> owner(value.data, duckdb_free);
    return owner ? std::string(owner.get(), value.size) : std::string();
}

std::optional<double> Result::real(std::size_t column, std::size_t row)
{
    if (duckdb_value_is_null(&_result, column, row))
        return std::nullopt;
    const double value = duckdb_value_double(&_result, column, row);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::int64_t Result::integer(std::size_t column, std::size_t row)
{
    return duckdb_value_int64(&_result, column, row);
}

Connection::Connection(duckdb_database database)
{
    if (duckdb_connect(database, &_connection) != DuckDBSuccess)
        throw QueryError("the database gives no connection");
}

Connection::~Connection()
{
    // During stack unwinding the database releases such a statement without waiting for its
    // threads, which then use released memory.
    if (std::uncaught_exceptions() > 0)
        endStatement();
    duckdb_disconnect(&_connection);
}

void Connection::endStatement() noexcept
{
    duckdb_interrupt(_connection);
    // The next statement waits for the threads of the last one and releases it.
    duckdb_query(_connection, "SELECT 1", nullptr);
}

namespace {

/// The interface takes C strings, so a NUL would cut the statement.
void refuseNul(const std::string& sql)
{
    if (sql.find('\0') != std::string::npos)
        throw QueryError("Invalid Input Error: a text holds the character NUL");
}

} // namespace

Result Connection::query(const std::string& sql)
{
    refuseNul(sql);
    duckdb_result raw{};
    const bool succeeded = duckdb_query(_connection, sql.c_str(), &raw) == DuckDBSuccess;
    Result result(raw);
    if (!succeeded) {
        const char* text = duckdb_result_error(&result.handle());
        throw QueryError(text ? text : "the statement failed");
    }
    return result;
}

Prepared::Prepared(Connection& connection, const std::string& sql)
{
    refuseNul(sql);
    if (duckdb_prepare(connection.handle(), sql.c_str(), &_statement) == DuckDBSuccess)
        return;
    const char* text = duckdb_prepare_error(_statement);
    const std::string message = text ? text : "the statement cannot be prepared";
    duckdb_destroy_prepare(&_statement);
    throw QueryError(message);
}

std::vector<std::pair<std::string, duckdb_type>> Prepared::columns() const
{
    std::vector<std::pair<std::string, duckdb_type>> columns;
    const auto count = duckdb_prepared_statement_column_count(_statement);
    for (idx_t i = 0; i < count; ++i) {
        const std::unique_ptr<const char, void (*)(const char*)> name(
            duckdb_prepared_statement_column_name(_statement, i),
            [](const char* text) { duckdb_free(const_cast<char*>(text)); });
        columns.emplace_back(name ? name.get() : "",
                             duckdb_prepared_statement_column_type(_statement, i));
    }
    return columns;
}

Result Prepared::stream()
{
    duckdb_result raw{};
    const bool succeeded = duckdb_execute_prepared_streaming(_statement, &raw) == DuckDBSuccess;
    Result result(raw);
    if (!succeeded) {
        const char* text = duckdb_result_error(&result.handle());
        throw QueryError(text ? text : "the statement failed");
    }
    return result;
}

Chunk nextChunk(Result& stream)
{
    Chunk chunk(duckdb_fetch_chunk(stream.handle()));
    if (!chunk)
        if (const char* text = duckdb_result_error(&stream.handle()); text && *text)
            throw QueryError(text);
    if (chunk && chunk.rows() == 0)
        return Chunk();
    return chunk;
}

} // namespace datafile::duck
