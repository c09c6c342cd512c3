#include "DuckDb.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

DuckDb::DuckDb(int threads)
{
    if (duckdb_open(nullptr, &_database) != DuckDBSuccess ||
        duckdb_connect(_database, &_connection) != DuckDBSuccess) {
        std::fprintf(stderr, "bench: the baseline database does not open\n");
        std::exit(1);
    }
    run("SET threads = " + std::to_string(threads));
}

DuckDb::~DuckDb()
{
    duckdb_disconnect(&_connection);
    duckdb_close(&_database);
}

void DuckDb::run(const std::string& statement)
{
    duckdb_result result;
    if (duckdb_query(_connection, statement.c_str(), &result) != DuckDBSuccess) {
        std::fprintf(stderr, "bench: %s\n", duckdb_result_error(&result));
        std::exit(1);
    }
    duckdb_destroy_result(&result);
}

} // namespace bench
