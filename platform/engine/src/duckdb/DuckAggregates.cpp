#include <string_view>

#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

/// The SQL of an aggregate function. $ is the column, # is the number of the record and % is the
/// centile.
struct AggregateSql
{
    Aggregate function;
    const char* sql;
    /// SQL for reals if the database's own function is not exact enough. It treats infinite and
    /// not-a-number reals as missing. Null if `sql` is used for reals too.
    const char* sqlOfReals = nullptr;
};

/// In the order of Aggregate.
constexpr AggregateSql kAggregates[] = {
    {Aggregate::Key, "$"},
    {Aggregate::Count, "count($)"},
    {Aggregate::Sum, "sum($)", "hv_real_sum($)"},
    {Aggregate::Mean, "avg($)", "hv_real_mean($)"},
    {Aggregate::Least, "min($)"},
    {Aggregate::Greatest, "max($)"},
    {Aggregate::Deviation, "hv_real_sd(CAST($ AS DOUBLE))", "hv_real_sd($)"},
    {Aggregate::Variance, "hv_real_variance(CAST($ AS DOUBLE))", "hv_real_variance($)"},
    {Aggregate::Median, "quantile_cont(CAST($ AS DOUBLE), 0.5)"},
    {Aggregate::Percentile, "quantile_cont(CAST($ AS DOUBLE), % / 100.0)"},
    {Aggregate::First, "arg_min_null($, #)"},
    {Aggregate::Last, "arg_max_null($, #)"},
};

std::string aggregate(const DuckDialect& dialect, const AggregateCall& call)
{
    const AggregateSql& known = kAggregates[static_cast<std::size_t>(call.function)];
    const bool isReal = call.type == ValueType::Real;
    const bool hasOwn = isReal && known.sqlOfReals;
    const std::string column = isReal && !hasOwn ? dialect.finiteReal(call.column) : call.column;
    std::string text;
    for (const char character : std::string_view(hasOwn ? known.sqlOfReals : known.sql)) {
        if (character == '$')
            text += column;
        else if (character == '#')
            text += call.number;
        else if (character == '%')
            text += std::to_string(call.centile);
        else
            text += character;
    }
    return text;
}

} // namespace

std::string DuckDialect::aggregated(const std::string& from,
                                    const std::vector<AggregateColumn>& columns) const
{
    std::string list;
    for (const AggregateColumn& column : columns)
        list += (list.empty() ? "" : ", ") + column.result(aggregate(*this, column.call)) + " AS " +
                column.name;
    const std::string keys = keyPlaces(columns, "");
    return "SELECT " + list + " FROM " + from + " AS t" +
           (keys.empty() ? ""
                         : " GROUP BY " + keys + " ORDER BY " + keyPlaces(columns, " NULLS LAST"));
}

} // namespace EmbeddedHV
