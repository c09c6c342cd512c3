#include "DataFileNames.h"
#include "datafile/FileTables.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/DuckDialect.h"

// Relations and files in the database's SQL.

namespace EmbeddedHV {
namespace {

/// The database's hashes have 64 bits.
constexpr const char* kHashes = "18446744073709551616.0";

} // namespace

std::string DuckDialect::recordNumber() const
{
    return "row_number() OVER ()";
}

std::string DuckDialect::leading(const LeadingRecords& records) const
{
    return "SELECT " + records.columns + " FROM " + records.from +
           (records.order.empty() ? "" : " ORDER BY " + records.order) + " LIMIT " +
           std::to_string(records.count);
}

std::string DuckDialect::firstRecords(const std::string& columns, const std::string& from,
                                      const std::string& keys, const std::string& number) const
{
    return "SELECT " + columns + " FROM " + from + " QUALIFY row_number() OVER (PARTITION BY " +
           keys + " ORDER BY " + number + ") = 1";
}

std::string DuckDialect::draw(const std::string& number, std::int64_t seed) const
{
    // The outer hash makes the draws of two seeds independent.
    return "hash(hash(" + number + ", " + std::to_string(seed) + "))";
}

std::string DuckDialect::drawnShare(const std::string& draw) const
{
    return draw + "::DOUBLE / " + kHashes;
}

std::string DuckDialect::copies(const std::string& factor, const std::string& number,
                                std::int64_t most, const std::string& fault) const
{
    return "unnest(range(CASE WHEN " + factor + " > " + std::to_string(most) + " THEN error(" +
           quotedLiteral(fault) + ")::BIGINT ELSE CAST(floor(" + factor +
           ") AS BIGINT) + CASE WHEN " + drawnShare("hash(" + number + ")") + " < " + factor +
           " - floor(" + factor + ") THEN 1 ELSE 0 END END))";
}

std::string DuckDialect::replacedColumns(const datafile::Fields&,
                                         const std::vector<NewColumn>& replaced) const
{
    std::string columns;
    for (const NewColumn& column : replaced)
        columns += (columns.empty() ? "" : ", ") + column.value + " AS " + column.name;
    return "* REPLACE (" + columns + ")";
}

std::string DuckDialect::csvTable(const CsvSource& source) const
{
    return datafile::csvTable(source.path, source.hasHeader, source.columns, source.reading);
}

std::string DuckDialect::rejectScansOf(const std::string& rejects) const
{
    return datafile::rejectScansOf(rejects);
}

std::string DuckDialect::readsAll(const std::string& columns) const
{
    // The database does not convert columns that a statement does not use.
    return "hash(" + columns + ") IS NOT NULL";
}

std::string DuckDialect::parquetTable(const std::string& path) const
{
    return datafile::parquetTable(path);
}

std::string DuckDialect::fileOf(const std::string& select, const FileTarget& target) const
{
    std::string options = "USE_TMP_FILE false, ";
    if (target.isCsv)
        options += "FORMAT CSV, HEADER true";
    else
        options += "FORMAT PARQUET, KV_METADATA {" + quotedLiteral(target.key) + ": " +
                   quotedLiteral(target.entry) + "}";
    return "COPY (" + select + ") TO " + quotedLiteral(target.path) + " (" + options + ")";
}

std::string DuckDialect::newTable(const std::string& table, const std::string& select) const
{
    return "CREATE TABLE " + table + " AS " + select;
}

std::string DuckDialect::newTemporaryTable(const std::string& table,
                                           const std::string& select) const
{
    return "CREATE TEMP TABLE " + table + " AS " + select;
}

std::string DuckDialect::addition(const std::string& table, const std::string& select) const
{
    return "INSERT INTO " + table + " BY NAME " + select;
}

} // namespace EmbeddedHV
