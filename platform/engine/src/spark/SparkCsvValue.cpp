#include "spark/SparkCsvValue.h"

#include "base/ListText.h"
#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

namespace EmbeddedHV {
namespace {

using datafile::CsvKind;

constexpr const char* kInteger = "[+-]?(0|[1-9][0-9]*)";
constexpr const char* kReal = "[+-]?((0|[1-9][0-9]*)([.][0-9]*)?|[.][0-9]+)([eE][+-]?[0-9]+)?";
constexpr const char* kNoFiniteReal = "nan|NaN|-?inf|-?Infinity";
/// With a data model, numbers may have leading zeros.
constexpr const char* kAnyInteger = "[+-]?[0-9]+";
constexpr const char* kAnyReal =
    "[+-]?([0-9]+([.][0-9]*)?|[.][0-9]+)([eE][+-]?[0-9]+)?|nan|NaN|-?inf|-?Infinity";
constexpr const char* kDate = "[0-9]{4}-[0-9]{2}-[0-9]{2}";
/// Blanks may follow the seconds, not the minutes.
constexpr const char* kTime = "([01]?[0-9]|2[0-3]):[0-5][0-9](:[0-5][0-9]([.][0-9]{1,6})? *)?";
constexpr const char* kTimestamp =
    "[0-9]{4}-[0-9]{2}-[0-9]{2}[ T]([01][0-9]|2[0-3]):[0-5][0-9](:[0-"
    "5][0-9]([.][0-9]{1,6})? *)?";

/// Whether the whole text matches. $ would also match before a line end.
std::string matches(const std::string& text, const char* pattern)
{
    return text + " RLIKE " + sparkDialect().literal("^(" + std::string(pattern) + ")\\z");
}

std::string trimmed(const std::string& column)
{
    return "trim(" + column + ")";
}

std::string withoutBlanksBefore(const std::string& column)
{
    return "ltrim(" + column + ")";
}

std::string hasDate(const std::string& column)
{
    return "try_cast(left(" + column + ", 10) AS DATE) IS NOT NULL";
}

/// The part of a time between its colons, from 1.
std::string timePart(const std::string& column, int part)
{
    return "split_part(" + column + ", ':', " + std::to_string(part) + ")";
}

/// A time of one or two digits for the hour, with or without seconds.
std::string timeOf(const std::string& column)
{
    return "time_from_micros(CAST(" + timePart(column, 1) + " AS BIGINT) * 3600000000 + CAST(" +
           timePart(column, 2) + " AS BIGINT) * 60000000 + CAST(CAST(coalesce(nullif(" +
           timePart(column, 3) + ", ''), '0') AS DECIMAL(8, 6)) * 1000000 AS BIGINT))";
}

} // namespace

std::int64_t bitOf(CsvKind kind)
{
    return kind == CsvKind::Missing ? 0 : std::int64_t{1} << (static_cast<int>(kind) - 1);
}

/// One expression for all columns, because Java compiles only short ones.
///
/// What a text begins with and where it has its marks decides which patterns are tried, because
/// they take the most time. No number has - in both places of a date, and none of fewer than 19
/// characters is beyond the range of an Integer. A number beyond the range of a Real is a text.
std::string csvKindsOf(const std::vector<std::string>& columns, const std::string& records)
{
    const auto bit = [](CsvKind kind) { return std::to_string(bitOf(kind)); };
    const std::string number = "hv_number";
    const std::string time = "hv_time";
    const std::string integerKind = sparkSql(
        "CASE WHEN length($1) < 19 OR try_cast($1 AS BIGINT) IS NOT NULL THEN $2 ELSE $3 END",
        {number, bit(CsvKind::Integer), bit(CsvKind::Real)});
    const std::string realKind = sparkSql(
        "CASE WHEN length($1) < 300 AND NOT contains($1, 'e') AND NOT contains($1, 'E') THEN $2 "
        "WHEN abs(CAST($1 AS DOUBLE)) = " HV_SPARK_INFINITY " OR "
        "CAST($1 AS DOUBLE) = 0 AND $1 RLIKE '^[^eE]*[1-9]' THEN $3 ELSE $2 END",
        {number, bit(CsvKind::Real), bit(CsvKind::Text)});
    const std::string numberKind =
        sparkSql("CASE WHEN NOT contains($1, '.') AND $2 THEN $3 WHEN $4 THEN $5 WHEN $6 THEN $7 "
                 "ELSE $8 END",
                 {number, matches(number, kInteger), integerKind, matches(number, kReal), realKind,
                  matches(number, kNoFiniteReal), bit(CsvKind::Real), bit(CsvKind::Text)});
    const std::string dateKind =
        sparkSql("CASE WHEN NOT $1 THEN $6 WHEN $2 THEN $4 WHEN $3 THEN $5 ELSE $6 END",
                 {hasDate(time), matches(number, kDate), matches(time, kTimestamp),
                  bit(CsvKind::Date), bit(CsvKind::Timestamp), bit(CsvKind::Text)});
    const std::string kind =
        sparkSql("CASE WHEN $1 IS NULL THEN 0 "
                 "WHEN NOT (ascii($1) BETWEEN ascii('+') AND ascii('9') "
                 "OR left($1, 1) IN ('n', 'N', 'i', 'I')) THEN $5 "
                 "WHEN substr($1, 5, 1) = '-' AND substr($1, 8, 1) = '-' THEN $2 "
                 "WHEN contains($1, ':') THEN CASE WHEN $3 THEN $6 ELSE $5 END ELSE $4 END",
                 {number, dateKind, matches(time, kTime), numberKind, bit(CsvKind::Text),
                  bit(CsvKind::Time)});
    return sparkSql(
        "SELECT CAST(hv_place AS STRING), CAST(bit_or($1) AS STRING) FROM (SELECT hv_place, "
        "trim(hv_text) AS $2, ltrim(hv_text) AS $3 FROM (SELECT posexplode(array($4)) AS "
        "(hv_place, hv_text) FROM $5)) GROUP BY hv_place",
        {kind, number, time, base::joined(columns, ", "), records});
}

std::string csvFits(const std::string& column, ValueType type)
{
    const std::string number = trimmed(column);
    const std::string time = withoutBlanksBefore(column);
    switch (type) {
    case ValueType::Integer:
        return "coalesce(" + matches(number, kAnyInteger) + " AND try_cast(" + number +
               " AS BIGINT) IS NOT NULL, false)";
    case ValueType::Real:
        return "coalesce(" + matches(number, kAnyReal) + ", false)";
    case ValueType::Date:
        return "coalesce(" + matches(number, kDate) + " AND " + hasDate(number) + ", false)";
    case ValueType::Time:
        return "coalesce(" + matches(time, kTime) + ", false)";
    case ValueType::Timestamp:
        return "coalesce((" + matches(number, kDate) + " OR " + matches(time, kTimestamp) +
               ") AND " + hasDate(time) + ", false)";
    default:
        return column + " IS NOT NULL";
    }
}

std::string csvValue(const std::string& column, ValueType type)
{
    switch (type) {
    case ValueType::Integer:
        return "CAST(" + trimmed(column) + " AS BIGINT)";
    case ValueType::Real:
        return "CAST(" + trimmed(column) + " AS DOUBLE)";
    case ValueType::Date:
        return "CAST(" + trimmed(column) + " AS DATE)";
    case ValueType::Time:
        return timeOf(trimmed(column));
    case ValueType::Timestamp:
        return "CAST(replace(" + trimmed(column) + ", 'T', ' ') AS TIMESTAMP_NTZ)";
    default:
        return column;
    }
}

} // namespace EmbeddedHV
