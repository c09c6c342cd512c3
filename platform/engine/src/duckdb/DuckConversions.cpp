#include "datafile/ColumnTypes.h"
#include "duckdb/DuckDialect.h"
#include "expression/FieldTypes.h"

namespace EmbeddedHV {
namespace {

/// A clause of a CASE: the list as a text if all its numbers are present.
std::string wholeListClause(const std::string& list)
{
    return " WHEN list_aggregate(list_transform(" + list +
           ", lambda hv_n: hv_n IS NOT NULL AND isfinite(hv_n)), 'bool_and') "
           "THEN CAST(" +
           list + " AS VARCHAR)";
}

} // namespace

std::string DuckDialect::listText(const std::string& list) const
{
    return "CASE" + wholeListClause(list) + " WHEN len(" + list + ") = 3 THEN CASE" +
           wholeListClause("list_slice(" + list + ", 1, 2)") + " END END";
}

std::string DuckDialect::exactly(const std::string& value, ValueType from, ValueType to) const
{
    const std::string cast = this->cast(value, to);
    // Not every integer beyond 2^53 is exact as a double.
    if (from == ValueType::Integer && to == ValueType::Real)
        return "CASE WHEN CAST(" + cast + " AS HUGEINT) = " + value + " THEN " + cast + " END";
    if (from == ValueType::Real && to == ValueType::Integer)
        return "CASE WHEN TRY_" + cast + " = " + value + " THEN TRY_" + cast + " END";
    if (from == ValueType::Timestamp && to == ValueType::Date)
        return "CASE WHEN CAST(" + cast + " AS TIMESTAMP) = " + value + " THEN " + cast + " END";
    return from == to ? value : cast;
}

std::string DuckDialect::onModelScale(const std::string& value, ValueType type) const
{
    return datafile::onModelScale(value, storageOf(type));
}

std::string DuckDialect::raised(const std::string& text, ValueType type) const
{
    return cast("error(" + text + ")", type);
}

} // namespace EmbeddedHV
