#include "spark/SparkCsvValue.h"

#include "spark/SparkDialect.h"

namespace EmbeddedHV {
namespace {

using datafile::CsvKind;

constexpr const char* kInteger = "[+-]?(0|[1-9][0-9]*)";
constexpr const char* kReal =
    "[+-]?((0|[1-9][0-9]*)([.][0-9]*)?|[.][0-9]+)([eE][+-]?[0-9]+)?|nan|NaN|-?inf|-?Infinity";
/// With a data model, numbers may have leading zeros.
constexpr const char* kAnyInteger = "[+-]?[0-9]+";
constexpr const char* kAnyReal =
    "[+-]?([0-9]+([.][0-9]*)?|[.][0-9]+)([eE][+-]?[0-9]+)?|nan|NaN|-?inf|-?Infinity";
constexpr const char* kDate = "[0-9]{4}-[0-9]{2}-[0-9]{2}";
constexpr const char* kTime = "([01]?[0-9]|2[0-3]):[0-5][0-9](:[0-5][0-9]([.][0-9]{1,6})?)?";
constexpr const char* kTimestamp =
    "[0-9]{4}-[0-9]{2}-[0-9]{2}[ T]([01][0-9]|2[0-3]):[0-5][0-9](:[0-"
    "5][0-9]([.][0-9]{1,6})?)?";

std::string matches(const std::string& text, const char* pattern)
{
    return text + " RLIKE " + sparkDialect().literal("^(" + std::string(pattern) + ")$");
}

std::string trimmed(const std::string& column)
{
    return "trim(" + column + ")";
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

std::string csvKindOf(const std::string& column)
{
    const auto bit = [](CsvKind kind) { return std::to_string(bitOf(kind)); };
    const std::string number = trimmed(column);
    return "CASE WHEN " + column + " IS NULL THEN 0 WHEN " + matches(number, kInteger) +
           " THEN CASE WHEN try_cast(" + number + " AS BIGINT) IS NULL THEN " + bit(CsvKind::Real) +
           " ELSE " + bit(CsvKind::Integer) + " END WHEN " + matches(number, kReal) + " THEN " +
           bit(CsvKind::Real) + " WHEN " + matches(column, kDate) + " AND " + hasDate(column) +
           " THEN " + bit(CsvKind::Date) + " WHEN " + matches(column, kTime) + " THEN " +
           bit(CsvKind::Time) + " WHEN " + matches(column, kTimestamp) + " AND " + hasDate(column) +
           " THEN " + bit(CsvKind::Timestamp) + " ELSE " + bit(CsvKind::Text) + " END";
}

std::string csvFits(const std::string& column, ValueType type)
{
    const std::string number = trimmed(column);
    switch (type) {
    case ValueType::Integer:
        return "coalesce(" + matches(number, kAnyInteger) + " AND try_cast(" + number +
               " AS BIGINT) IS NOT NULL, false)";
    case ValueType::Real:
        return "coalesce(" + matches(number, kAnyReal) + ", false)";
    case ValueType::Date:
        return "coalesce(" + matches(column, kDate) + " AND " + hasDate(column) + ", false)";
    case ValueType::Time:
        return "coalesce(" + matches(column, kTime) + ", false)";
    case ValueType::Timestamp:
        return "coalesce((" + matches(column, kDate) + " OR " + matches(column, kTimestamp) +
               ") AND " + hasDate(column) + ", false)";
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
        return "CAST(" + column + " AS DATE)";
    case ValueType::Time:
        return timeOf(column);
    case ValueType::Timestamp:
        return "CAST(replace(" + column + ", 'T', ' ') AS TIMESTAMP_NTZ)";
    default:
        return column;
    }
}

} // namespace EmbeddedHV
