#include <algorithm>
#include <limits>

#include "expression/FieldTypes.h"
#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

// Relations and files in the cluster's SQL.

namespace EmbeddedHV {
namespace {

/// The server takes no larger number in a LIMIT.
constexpr std::int64_t kMostInLimit = std::numeric_limits<std::int32_t>::max();

/// The hidden column of the server with the file and the place of each record.
constexpr const char* kFileMetadata = "_metadata";

/// The options that write CSV as RFC 4180 says.
constexpr const char* kCsvOptions =
    "'sep' = ',', 'quote' = '\"', 'escape' = '\"', 'encoding' = 'UTF-8', "
    "'ignoreLeadingWhiteSpace' = 'false', 'ignoreTrailingWhiteSpace' = 'false'";

/// A path as a pattern of the file system that only this path fits.
std::string literalPattern(const std::string& path)
{
    constexpr std::string_view kPatternCharacters = "*?[]{}\\";
    std::string pattern;
    for (const char c : path) {
        if (kPatternCharacters.find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern;
}

} // namespace

std::string SparkDialect::inFileOrder(const std::string& table,
                                      const datafile::Fields& fields) const
{
    const bool hidesMetadata = std::any_of(fields.begin(), fields.end(), [](const CFField& field) {
        return field.GetName() == kFileMetadata;
    });
    if (hidesMetadata)
        return table;
    const std::string metadata = kFileMetadata;
    return "(SELECT * EXCEPT (hv_file, hv_row) FROM (SELECT *, " + metadata +
           ".file_name AS hv_file, " + metadata + ".row_index AS hv_row FROM " + table +
           ") ORDER BY hv_file, hv_row)";
}

std::string SparkDialect::recordNumber() const
{
    // The window has no parts, so one task numbers all records.
    return "row_number() OVER (ORDER BY monotonically_increasing_id())";
}

std::string SparkDialect::recordOrder() const
{
    return "monotonically_increasing_id()";
}

std::string SparkDialect::leading(const LeadingRecords& records) const
{
    const std::string from =
        records.order.empty() ? ordered(records.from, records.spare) : records.from;
    const std::string& order = records.order.empty() ? records.spare : records.order;
    if (records.count <= kMostInLimit)
        return "SELECT " + records.columns + " FROM " + from + " ORDER BY " + order + " LIMIT " +
               std::to_string(records.count);
    return "SELECT " + records.columns + " FROM (SELECT *, row_number() OVER (ORDER BY " +
           (records.order.empty() ? recordOrder() : order) + ") AS " + records.spare + " FROM " +
           records.from + ") WHERE " + records.spare + " <= " + literal(records.count) +
           " ORDER BY " + records.spare;
}

std::string SparkDialect::firstRecords(const std::string& columns, const std::string& from,
                                       const std::string& keys, const std::string& number) const
{
    return "SELECT " + columns + " FROM (SELECT r.* FROM (SELECT min_by(struct(*), " + number +
           ") AS r FROM " + from + " GROUP BY " + keys + "))";
}

std::string SparkDialect::draw(const std::string& number, std::int64_t seed) const
{
    // The outer hash makes the draws of two seeds independent.
    return "xxhash64(xxhash64(" + number + ", " + literal(seed) + "))";
}

std::string SparkDialect::drawnShare(const std::string& draw) const
{
    return "shiftrightunsigned(" + draw + ", 11) * 1.1102230246251565e-16D"; // 2^-53
}

std::string SparkDialect::copies(const std::string& factor, const std::string& number,
                                 std::int64_t most, const std::string& fault) const
{
    // The server repeats a value 0 times, but counts a sequence from 1 to 0 downwards.
    return "explode(array_repeat(true, CASE WHEN " + factor + " > " + std::to_string(most) +
           " THEN CAST(raise_error(" + literal(fault) + ") AS INT) ELSE CAST(floor(" + factor +
           ") AS INT) + CASE WHEN " + drawnShare("xxhash64(" + number + ")") + " < " + factor +
           " - floor(" + factor + ") THEN 1 ELSE 0 END END))";
}

std::string SparkDialect::replacedColumns(const datafile::Fields& fields,
                                          const std::vector<NewColumn>& replaced) const
{
    std::string columns;
    for (const CFField& field : fields) {
        const std::string column = name(field.GetName());
        const auto found = std::ranges::find(replaced, column, &NewColumn::name);
        columns += (columns.empty() ? "" : ", ") +
                   (found == replaced.end() ? column : found->value + " AS " + column);
    }
    return columns;
}

std::string SparkDialect::parquetTable(const std::string& path) const
{
    return "parquet." + name(literalPattern(path));
}

std::string SparkDialect::fileOf(const std::string& select, const FileTarget& target) const
{
    const std::string into = "INSERT OVERWRITE DIRECTORY " + literal(target.path) + " USING ";
    if (!target.isCsv)
        return into + "parquet " + select;
    // The server would write dates and numbers in its own way.
    std::string texts;
    for (const CFField& field : target.columns) {
        const std::string column = name(field.GetName());
        texts += (texts.empty() ? "" : ", ") +
                 exactly(column, valueTypeOf(field.GetStorage()), ValueType::String) + " AS " +
                 column;
    }
    return into + "csv OPTIONS (" + kCsvOptions +
           ", 'header' = 'true', 'emptyValue' = '\"\"', 'nullValue' = '') SELECT " + texts +
           " FROM (" + select + ")";
}

std::string SparkDialect::newTable(const std::string& table, const std::string& select) const
{
    return "CREATE TABLE " + table + " USING parquet AS " + select;
}

std::string SparkDialect::newTemporaryTable(const std::string& table,
                                            const std::string& select) const
{
    return newTable(table, select);
}

std::string SparkDialect::addition(const std::string& table, const std::string& select) const
{
    return "INSERT INTO " + table + " BY NAME " + select;
}

} // namespace EmbeddedHV
