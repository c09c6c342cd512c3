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

} // namespace

std::string DuckDialect::aggregate(const AggregateCall& call) const
{
    const AggregateSql& known = kAggregates[static_cast<std::size_t>(call.function)];
    const bool isReal = call.type == ValueType::Real;
    const bool hasOwn = isReal && known.sqlOfReals;
    const std::string column = isReal && !hasOwn ? finiteReal(call.column) : call.column;
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

} // namespace EmbeddedHV
