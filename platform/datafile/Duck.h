#pragma once

#include <duckdb.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Owners for the handles of the database's C interface.
namespace datafile::duck {

/// A statement that the database refused or that failed while it ran; the text is the database's.
class QueryError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    /// Whether the statement ended because it was interrupted.
    bool interrupted() const;
};

/// A new instance in memory, which fetches nothing from outside: what is needed is linked in.
/// `options` are settings of the whole instance, name and value, which cost a statement each once
/// it is open. The caller closes it. Throws QueryError.
duckdb_database openInMemory(const std::vector<std::pair<std::string, std::string>>& options = {});

/// The whole result of a statement, held in memory: for small results.
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
    /// The text with all its bytes, be there zero characters among them.
    std::string bytes(std::size_t column, std::size_t row);
    std::int64_t integer(std::size_t column, std::size_t row);
    /// Nothing for a missing value, or one that is infinite or not a number.
    std::optional<double> real(std::size_t column, std::size_t row);
    duckdb_result& handle() { return _result; }

private:
    duckdb_result _result{};
};

/// A connection; one thread at a time, except for interrupt and progress, which the monitor calls.
class Connection
{
public:
    explicit Connection(duckdb_database database);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Runs one statement. Throws QueryError.
    Result query(const std::string& sql);
    /// Ends a statement whose rows were not all fetched. Its result is gone by then; left alone, it
    /// would keep what it holds, and lose it if the connection ended first.
    void endStatement() noexcept;
    duckdb_connection handle() const { return _connection; }

private:
    duckdb_connection _connection = nullptr;
};

/// A statement that is bound but does not run until it is asked to.
class Prepared
{
public:
    /// Throws QueryError. The connection is borrowed and must outlive the statement.
    Prepared(Connection& connection, const std::string& sql);
    Prepared(Prepared&& other) noexcept : _statement(std::exchange(other._statement, nullptr)) {}
    Prepared& operator=(Prepared&&) = delete;
    ~Prepared() { duckdb_destroy_prepare(&_statement); }

    /// Names and types of the columns that the statement gives.
    std::vector<std::pair<std::string, duckdb_type>> columns() const;
    /// Starts the statement; its rows are made as they are fetched. Throws QueryError.
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
