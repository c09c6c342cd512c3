#include <algorithm>
#include <limits>

#include "ErrorIds.h"
#include "datafile/RaisedFault.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "expression/FunctionCall.h"
#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

// Relations and files in the cluster's SQL.

namespace EmbeddedHV {
namespace {

/// The server takes no larger number in a LIMIT.
constexpr std::int64_t kMostInLimit = std::numeric_limits<std::int32_t>::max();

/// A value that no file has, so that an empty value and an empty text in quotes differ.
constexpr const char* kNoValue = "\\ue000hv\\ue001";

/// The hidden column of the server with the file and the place of each record.
constexpr const char* kFileMetadata = "_metadata";

/// The options that read and write CSV as RFC 4180 says.
constexpr const char* kCsvOptions =
    "'sep' = ',', 'quote' = '\"', 'escape' = '\"', 'encoding' = 'UTF-8', 'inferSchema' = 'false', "
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

std::string sparkFile(const SparkDialect& dialect, const char* format, const std::string& path)
{
    return format + ("." + dialect.name(literalPattern(path)));
}

std::string positionName(std::size_t position)
{
    return "c" + std::to_string(position);
}

/// The text of a CSV file as a value of the field's type; missing if it does not convert.
std::string converted(const SparkDialect& dialect, const std::string& text, ValueType type)
{
    switch (type) {
    case ValueType::Integer:
        return functionSql(dialect, "toInteger", "String", {text});
    case ValueType::Real:
        return functionSql(dialect, "toReal", "String", {text});
    case ValueType::Date:
        return functionSql(dialect, "toDate", "String", {text});
    case ValueType::Time:
        return functionSql(dialect, "toTime", "String", {text});
    case ValueType::Timestamp:
        return functionSql(dialect, "toTimestamp", "String", {text});
    default:
        return text;
    }
}

/// The value of a column of a CSV file. A text that does not convert fails the statement.
std::string csvValue(const SparkDialect& dialect, const CsvSource& source, std::size_t position)
{
    const CFField& field = source.columns[position];
    const ValueType type = valueTypeOf(field.GetStorage());
    const std::string text = positionName(position);
    std::string value = converted(dialect, text, type);
    if (value == text || !source.reading.rejects.empty())
        return value;
    const std::string begin = raisedText(
        errors::kBadRecord, {.step = "read",
                             .file = source.path,
                             .field = field.GetName(),
                             .what = "a value of the field \"" + field.GetName() + "\" is not " +
                                     typeWordOf(field.GetStorage()) + ": \""});
    return "CASE WHEN " + text + " IS NOT NULL THEN coalesce(" + value + ", " +
           dialect.raised(dialect.literal(begin) + " || left(" + text + ", 100) || '\"'", type) +
           ") END";
}

/// The condition that all values of a record convert.
std::string allConvert(const SparkDialect& dialect, const CsvSource& source)
{
    std::string all;
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        const std::string text = positionName(i);
        const std::string value =
            converted(dialect, text, valueTypeOf(source.columns[i].GetStorage()));
        if (value != text)
            all.append(all.empty() ? "(" : " AND (")
                .append(text)
                .append(" IS NULL OR ")
                .append(value)
                .append(" IS NOT NULL)");
    }
    return all;
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

std::string SparkDialect::csvTable(const CsvSource& source) const
{
    std::string values;
    std::string names;
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        const char* separator = i == 0 ? "" : ", ";
        values +=
            separator + csvValue(*this, source, i) + " AS " + name(source.columns[i].GetName());
        names += separator + positionName(i);
    }
    const bool skips = !source.reading.rejects.empty();
    const std::string condition = skips ? allConvert(*this, source) : "";
    return "(SELECT " + values + " FROM " + sparkFile(*this, "csv", source.path) + " WITH (" +
           kCsvOptions + ", 'header' = '" + (source.hasHeader ? "true" : "false") +
           "', 'multiLine' = 'true', 'emptyValue' = '', 'nullValue' = '" + kNoValue +
           "', 'maxColumns' = '" + std::to_string(source.columns.size() + 1) + "', 'mode' = '" +
           (skips ? "DROPMALFORMED" : "FAILFAST") + "') AS t(" + names + ")" +
           (condition.empty() ? "" : " WHERE " + condition) + ")";
}

std::string SparkDialect::rejectScansOf(const std::string& rejects) const
{
    return rejects + "_scans"; // the server makes none
}

std::string SparkDialect::readsAll(const std::string& columns) const
{
    // The server does not read columns that a statement does not use. It knows that a hash is never
    // missing, but not its range.
    return "hash(" + columns + ") <= 2147483647";
}

std::string SparkDialect::parquetTable(const std::string& path) const
{
    return sparkFile(*this, "parquet", path);
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
