#include <string>

#include "spark/AggregateLevels.h"
#include "spark/ExactSums.h"
#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

namespace EmbeddedHV {
namespace {

/// The quotient of a sum and a count, between the least and the greatest value. A sum beyond the
/// range of a Real makes it infinite. `value` is a name of the levels.
std::string mean(AggregateLevels& levels, const std::string& sum, const std::string& value)
{
    const auto of = [&](const char* function) {
        return levels.aggregate(std::string(function) + "(" + value + ")");
    };
    return "CASE WHEN abs(" + sum + ") < " HV_SPARK_INFINITY " THEN greatest(" + of("min") +
           ", least(" + of("max") + ", " + sum + " / " + of("count") + ")) ELSE " + sum + " END";
}

/// A function of the spread of Reals. The squares of large numbers exceed the range of a double,
/// and those of tiny ones become 0, so the values are scaled. The result has the dimension of the
/// values or of their squares.
std::string spread(AggregateLevels& levels, const std::string& function, const std::string& value,
                   int dimension)
{
    constexpr int kScale = 700;
    constexpr int kFar = 400;
    const auto scaled = [&](int exponent) {
        const std::string back = " * " + sparkPowerOfTwo(-exponent);
        return levels.aggregate(function + "(" + value + " * " + sparkPowerOfTwo(exponent) + ")") +
               back + (dimension == 2 ? back : "");
    };
    const std::string greatest = levels.aggregate("max(abs(" + value + "))");
    return "CASE WHEN " + greatest + " >= " + sparkPowerOfTwo(kFar) + " THEN " + scaled(-kScale) +
           " WHEN " + greatest + " < " + sparkPowerOfTwo(-kFar) + " THEN " + scaled(kScale) +
           " ELSE " + levels.aggregate(function + "(" + value + ")") + " END";
}

std::string resultOf(AggregateLevels& levels, const AggregateCall& call, RealSums sums)
{
    const SparkDialect& dialect = sparkDialect();
    if (call.column == "*")
        return levels.aggregate("count(*)");
    const bool isReal = call.type == ValueType::Real;
    const bool isFast = isReal && sums == RealSums::Double;
    const std::string column = isReal ? dialect.finiteReal(call.column) : call.column;
    if (call.function == Aggregate::Key)
        return levels.key(column);
    const std::string value = levels.value(column);
    const std::string real = isReal ? value : dialect.cast(value, ValueType::Real);
    const auto sum = [&] {
        return isReal ? exactRealSum(levels, call.column, value) : exactIntegerSum(levels, value);
    };
    const auto spreadBy = [&](const std::string& function, int dimension) {
        return isReal ? spread(levels, function, value, dimension)
                      : levels.aggregate(function + "(" + real + ")");
    };
    const auto inOrder = [&](const std::string& function) {
        return levels.aggregate(function + "(" + value + ", " + levels.value(call.number) + ")");
    };
    const auto quantile = [&](std::int64_t centile) {
        return levels.aggregate("percentile(" + real + ", " + std::to_string(centile) + " / 100D)");
    };
    switch (call.function) {
    case Aggregate::Key:
        break;
    case Aggregate::Count:
        return levels.aggregate("count(" + value + ")");
    case Aggregate::Sum:
        return isFast ? levels.aggregate("sum(" + value + ")") : sum();
    case Aggregate::Mean:
        return isFast ? levels.aggregate("avg(" + value + ")")
                      : mean(levels, isReal ? sum() : dialect.cast(sum(), ValueType::Real), real);
    case Aggregate::Least:
        return levels.aggregate("min(" + value + ")");
    case Aggregate::Greatest:
        return levels.aggregate("max(" + value + ")");
    case Aggregate::Deviation:
        return spreadBy("stddev_samp", 1);
    case Aggregate::Variance:
        return spreadBy("var_samp", 2);
    case Aggregate::Median:
        return quantile(50);
    case Aggregate::Percentile:
        return quantile(call.centile);
    case Aggregate::First:
        return inOrder("min_by");
    case Aggregate::Last:
        return inOrder("max_by");
    }
    return {};
}

} // namespace

std::string SparkDialect::aggregated(const std::string& from,
                                     const std::vector<AggregateColumn>& columns) const
{
    AggregateLevels levels;
    std::string list;
    for (const AggregateColumn& column : columns)
        list += (list.empty() ? "" : ", ") + column.result(resultOf(levels, column.call, _sums)) +
                " AS " + column.name;
    const std::string order = keyPlaces(columns, " NULLS LAST");
    return "SELECT " + list + " FROM " + levels.relation(from) +
           (order.empty() ? "" : " ORDER BY " + order);
}

} // namespace EmbeddedHV
