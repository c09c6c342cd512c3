#pragma once

#include <duckdb.h>

#include <string>

namespace bench {

/// The database alone, in memory, through the interface that the engine uses. It is the baseline.
class DuckDb
{
public:
    explicit DuckDb(int threads);
    DuckDb(const DuckDb&) = delete;
    DuckDb& operator=(const DuckDb&) = delete;
    ~DuckDb();

    /// Runs a statement to its end; an error ends this process.
    void run(const std::string& statement);

private:
    duckdb_database _database = nullptr;
    duckdb_connection _connection = nullptr;
};

} // namespace bench
