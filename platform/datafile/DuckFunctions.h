#pragma once

#include <duckdb.h>

#include <cstddef>

/// Helpers for functions that the database calls.
namespace datafile::duck {

/// A type of the database, for one scope.
class LogicalType
{
public:
    explicit LogicalType(duckdb_type type) : _type(duckdb_create_logical_type(type)) {}
    LogicalType(const LogicalType&) = delete;
    LogicalType& operator=(const LogicalType&) = delete;
    ~LogicalType() { duckdb_destroy_logical_type(&_type); }

    duckdb_logical_type get() const { return _type; }

private:
    duckdb_logical_type _type;
};

/// Marks a row as missing. The vector allocates such marks on first use.
inline void setMissing(duckdb_vector vector, std::size_t row)
{
    duckdb_vector_ensure_validity_writable(vector);
    duckdb_validity_set_row_invalid(duckdb_vector_get_validity(vector), row);
}

} // namespace datafile::duck
