#include "datafile/ColumnTypes.h"

namespace datafile {
namespace {

/// The names of a storage: in SQL and in messages.
struct TypeNames
{
    CFField::StorageType storage;
    duckdb_type column;
    const char* sql;
    const char* word;
};

constexpr TypeNames kTypes[] = {
    {CFField::Integer, DUCKDB_TYPE_BIGINT, "BIGINT", "Integer"},
    {CFField::Real, DUCKDB_TYPE_DOUBLE, "DOUBLE", "Real"},
    {CFField::String, DUCKDB_TYPE_VARCHAR, "VARCHAR", "String"},
    {CFField::Date, DUCKDB_TYPE_DATE, "DATE", "Date"},
    {CFField::Time, DUCKDB_TYPE_TIME, "TIME", "Time"},
    {CFField::Timestamp, DUCKDB_TYPE_TIMESTAMP, "TIMESTAMP", "Timestamp"},
};

const TypeNames& namesOf(CFField::StorageType storage)
{
    for (const TypeNames& names : kTypes)
        if (names.storage == storage)
            return names;
    return kTypes[2]; // text can hold any value
}

} // namespace

const char* sqlTypeOf(CFField::StorageType storage)
{
    return namesOf(storage).sql;
}

const char* typeWordOf(CFField::StorageType storage)
{
    return namesOf(storage).word;
}

duckdb_type columnTypeOf(CFField::StorageType storage)
{
    return namesOf(storage).column;
}

CFField::StorageType storageOfColumn(duckdb_type type)
{
    switch (type) {
    case DUCKDB_TYPE_BOOLEAN:
    case DUCKDB_TYPE_TINYINT:
    case DUCKDB_TYPE_SMALLINT:
    case DUCKDB_TYPE_INTEGER:
    case DUCKDB_TYPE_BIGINT:
    case DUCKDB_TYPE_UTINYINT:
    case DUCKDB_TYPE_USMALLINT:
    case DUCKDB_TYPE_UINTEGER:
        return CFField::Integer;
    case DUCKDB_TYPE_UBIGINT: // out of range for a signed integer
    case DUCKDB_TYPE_HUGEINT:
    case DUCKDB_TYPE_UHUGEINT:
    case DUCKDB_TYPE_FLOAT:
    case DUCKDB_TYPE_DOUBLE:
    case DUCKDB_TYPE_DECIMAL:
        return CFField::Real;
    case DUCKDB_TYPE_DATE:
        return CFField::Date;
    case DUCKDB_TYPE_TIME:
    case DUCKDB_TYPE_TIME_NS:
        return CFField::Time;
    case DUCKDB_TYPE_TIMESTAMP:
    case DUCKDB_TYPE_TIMESTAMP_S:
    case DUCKDB_TYPE_TIMESTAMP_MS:
    case DUCKDB_TYPE_TIMESTAMP_NS:
    case DUCKDB_TYPE_TIMESTAMP_TZ:
        return CFField::Timestamp;
    default:
        return CFField::String;
    }
}

std::string canonicalColumn(const std::string& column, duckdb_type type)
{
    // A timestamp with a zone is converted to its clock reading in UTC, independent of the
    // process's zone.
    if (type == DUCKDB_TYPE_TIMESTAMP_TZ)
        return "CAST((" + column + " AT TIME ZONE 'UTC') AS TIMESTAMP)";
    const TypeNames& names = namesOf(storageOfColumn(type));
    return names.column == type ? column : "CAST(" + column + " AS " + names.sql + ")";
}

std::string onModelScale(const std::string& column, CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Date:
        return "(" + column + " - DATE '1970-01-01')";
    case CFField::Time:
    case CFField::Timestamp:
        return "epoch(" + column + ")";
    default:
        return column;
    }
}

CFField::FieldType defaultMeasure(CFField::StorageType storage)
{
    return storage == CFField::String ? CFField::Nominal : CFField::Continuous;
}

} // namespace datafile
