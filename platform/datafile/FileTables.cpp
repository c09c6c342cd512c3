#include "datafile/FileTables.h"

#include <cstdint>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "datafile/ColumnTypes.h"
#include "datafile/CsvScanner.h"
#include "datafile/InputFile.h"
#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

/// Properties of a CSV file's lines that the database must be told. Otherwise it would take the
/// first line break for the file's line end, even one inside quotes, and a blank line for the
/// names.
struct CsvLines
{
    std::uint64_t blankLines = 0; ///< before the first record
    CsvLineEnd end = CsvLineEnd::None;
};

/// The database reads blocks of this many bytes, and no longer record. Its default is 32 MB, which
/// takes more time and memory: see docs/performance.md.
constexpr std::size_t kUsualBuffer = 2 * kLongCsvRecord;

std::string limitsOf(std::size_t bytes)
{
    // Otherwise the buffer has 16 times the length of a record.
    const std::string limit = std::to_string(bytes);
    return ", max_line_size = " + limit + ", buffer_size = " + limit;
}

/// Ignores a file that cannot be read; the database reports the reason.
CsvLines linesOf(const std::string& path)
try {
    CsvScanner scanner(path);
    std::vector<CsvField> fields;
    if (!scanner.next(fields))
        return {};
    scanner.finishLine();
    return {scanner.line() - 1, scanner.lineEnd()};
} catch (const std::system_error&) {
    return {};
} catch (const std::length_error&) {
    return {};
}

/// Each thread of the database that reads CSV holds 2048 records. With more columns, one thread
/// reads, so that the memory does not grow with the number of processors.
constexpr std::size_t kMostColumnsInParallel = 2000;

std::string newLineOption(CsvLineEnd end)
{
    switch (end) {
    case CsvLineEnd::Return:
        return ", new_line = '\\r'";
    case CsvLineEnd::ReturnLineFeed:
        return ", new_line = '\\r\\n'";
    default:
        return ", new_line = '\\n'";
    }
}

} // namespace

std::string rejectScansOf(const std::string& rejects)
{
    return rejects + "_scans";
}

std::string csvLimits()
{
    return limitsOf(kLongestCsvRecord);
}

std::string csvTable(const std::string& path, bool hasHeader, const Fields& columns,
                     const CsvReading& reading)
{
    // Set all options, so that the database does not guess: delimiter, skipped lines, comments,
    // columns from folder names. A quoted empty field is an empty text.
    std::string sql = "read_csv(" + quotedLiteral(literalPath(path)) +
                      ", auto_detect = false, delim = ',', quote = '\"', escape = '\"', "
                      "comment = '', compression = 'none', allow_quoted_nulls = false, "
                      "hive_partitioning = false, header = ";
    const CsvLines lines = linesOf(path);
    sql += hasHeader ? "true, skip = " + std::to_string(lines.blankLines) : "false, skip = 0";
    sql += newLineOption(lines.end);
    sql += limitsOf(reading.hasLongRecords ? kLongestCsvRecord : kUsualBuffer);
    // With rejects, threads that begin at a wrong place would lose records without an error.
    if (reading.inOneThread || !reading.rejects.empty() || columns.size() > kMostColumnsInParallel)
        sql += ", parallel = false";
    if (!reading.rejects.empty())
        sql += ", store_rejects = true, rejects_table = " + quotedLiteral(reading.rejects) +
               ", rejects_scan = " + quotedLiteral(rejectScansOf(reading.rejects));
    sql += ", columns = {";
    const char* separator = "";
    for (const CFField& column : columns) {
        sql += separator + quotedLiteral(column.GetName()) + ": '" +
               sqlTypeOf(column.GetStorage()) + "'";
        separator = ", ";
    }
    return sql + "})";
}

std::string parquetTable(const std::string& path)
{
    return parquetTable(parquetParts(path));
}

std::string parquetTable(const ParquetParts& parts)
{
    std::string sql = "read_parquet(" + fileArgument(parts);
    if (!parts.isFile())
        sql += ", union_by_name = true";
    return sql + (parts.keys.empty() ? ", hive_partitioning = false)"
                                     : ", hive_partitioning = true, hive_types_autocast = false)");
}

std::string parquetMetadata(duck::Connection& connection, const std::string& path,
                            const std::string& key)
{
    try {
        const std::string file = parquetParts(path).files.front();
        duck::Result values = connection.query("SELECT decode(value) FROM parquet_kv_metadata(" +
                                               quotedLiteral(literalPath(file)) +
                                               ") WHERE key = " + quotedLiteral(key) + "::BLOB");
        return values.rows() > 0 ? values.text(0, 0) : std::string();
    } catch (const duck::QueryError&) {
        return {};
    }
}

} // namespace datafile
