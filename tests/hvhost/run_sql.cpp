#include <iostream>

#include "datafile/Duck.h"

/// Runs the statement of its argument in an empty database.
int main(int, char** words)
{
    duckdb_database database = datafile::duck::openInMemory();
    int status = 0;
    try {
        datafile::duck::Connection(database).query(words[1]);
    } catch (const datafile::duck::QueryError& error) {
        std::cerr << error.what() << '\n';
        status = 1;
    }
    duckdb_close(&database);
    return status;
}
