#pragma once

#include <duckdb.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Owners of the handles of the database's C interface.
namespace datafile::duck {

/// A statement was refused or failed. The text is the database's.
class QueryError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    /// Whether the statement was interrupted.
    bool interrupted() const;
};

/// Opens an instance in memory. It loads nothing from outside, because all it needs is linked in.
/// `options` are settings of the instance; each costs a statement after opening. The caller closes
/// the instance. Throws QueryError.
duckdb_database openInMemory(const std::vector<std::pair<std::string, std::string>>& options = {});

/// The complete result of a statement in memory, for small results.
class Result
{
public:
    Result() = default;
    explicit Result(duckdb_result result) : _result(result) {}
    Result(Result&& other) noexcept : _result(std::exchange(other._result, {})) {}
    Result& operator=(Result&& other) noexcept;
    ~Result() { duckdb_destroy_result(&_result); }

    std::size_t rows() { return duckdb_row_count(&_result); }
    /// The value as text; empty for a missing value.
    std::string text(std::size_t column, std::size_t row);
    /// The text as bytes, zero bytes included.
    std::string bytes(std::size_t column, std::size_t row);
    std::int64_t integer(std::size_t column, std::size_t row);
    /// nullopt for a missing value, an infinity and NaN.
    std::optional<double> real(std::size_t column, std::size_t row);
    duckdb_result& handle() { return _result; }

private:
    duckdb_result _result{};
};

/// A connection. One thread at a time; only interrupt and progress may be called from another
/// thread, by the monitor.
class Connection
{
public:
    explicit Connection(duckdb_database database);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Runs one statement. Throws QueryError.
    Result query(const std::string& sql);
    /// Ends a statement whose rows were not all fetched, after its result is destroyed. Otherwise
    /// the statement keeps its resources, and loses them if the connection ends first.
    void endStatement() noexcept;
    duckdb_connection handle() const { return _connection; }

private:
    duckdb_connection _connection = nullptr;
};

/// A bound statement that has not been executed.
class Prepared
{
public:
    /// Throws QueryError. The connection is borrowed and must outlive the statement.
    Prepared(Connection& connection, const std::string& sql);
    Prepared(Prepared&& other) noexcept : _statement(std::exchange(other._statement, nullptr)) {}
    Prepared& operator=(Prepared&&) = delete;
    ~Prepared() { duckdb_destroy_prepare(&_statement); }

    /// Names and types of the statement's columns.
    std::vector<std::pair<std::string, duckdb_type>> columns() const;
    /// Starts the statement. Rows are produced as they are fetched. Throws QueryError.
    Result stream();

private:
    duckdb_prepared_statement _statement = nullptr;
};

/// A chunk of up to duckdb_vector_size() rows.
class Chunk
{
public:
    explicit Chunk(duckdb_data_chunk chunk = nullptr) : _chunk(chunk) {}
    Chunk(Chunk&& other) noexcept : _chunk(std::exchange(other._chunk, nullptr)) {}
    Chunk& operator=(Chunk&& other) noexcept
    {
        std::swap(_chunk, other._chunk);
        return *this;
    }
    ~Chunk() { duckdb_destroy_data_chunk(&_chunk); }

    explicit operator bool() const { return _chunk != nullptr; }
    duckdb_data_chunk handle() const { return _chunk; }
    std::size_t rows() const { return duckdb_data_chunk_get_size(_chunk); }
    duckdb_vector column(std::size_t index) const
    {
        return duckdb_data_chunk_get_vector(_chunk, index);
    }

private:
    duckdb_data_chunk _chunk;
};

/// The next chunk of a streamed result; an empty Chunk at the end. Throws QueryError.
Chunk nextChunk(Result& stream);

} // namespace datafile::duck
