#include <array>
#include <cmath>
#include <string>

#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

// The server adds doubles in an order that depends on its tasks, and integers in 64 bits. Here the
// sums are exact instead: a value is split into digits of a few bits, and the digits of each place
// are added as integers.

namespace EmbeddedHV {
namespace {

/// Integers have digits of 21 bits, so that a place holds the digits of 2^41 records.
constexpr const char* kIntegerSum =
    "CAST(sum(shiftright($1, 42)) AS DECIMAL(20, 0)) * 4398046511104 + "
    "CAST(sum(shiftright($1, 21) & 2097151) AS DECIMAL(20, 0)) * 2097152 + sum($1 & 2097151)";

/// Reals have digits of 26 bits, from -2^25 to 2^25, so that a place holds the digits of 2^37
/// records. Greater numbers and what is beyond the last place are added as doubles.
constexpr int kPlaces = 5;
constexpr int kBits = 26;
constexpr int kGreatestPlace = 52; ///< the exponent of its unit
constexpr int kLeastPlace = kGreatestPlace - kBits * (kPlaces - 1);

std::string powerOfTwo(int exponent)
{
    return sparkDialect().literal(std::ldexp(1.0, exponent));
}

/// The value in units of a place.
std::string inUnits(const std::string& value, int place)
{
    return "rint(" + value + " * " + powerOfTwo(-place) + ")";
}

std::string digit(const std::string& value, int place)
{
    std::string units = inUnits(value, place);
    if (place == kGreatestPlace)
        return units;
    return units + " - " + inUnits(value, place + kBits) + " * " + powerOfTwo(kBits);
}

/// The sum of the digits, from the last place to the first. A carry rounds, so that all other
/// digits are small and no sum of them cancels the first one.
std::string sumOfDigits(const std::string& value, const std::string& filter)
{
    std::string sums;
    for (int place = kLeastPlace; place <= kGreatestPlace; place += kBits)
        sums += (sums.empty() ? "" : ", ") + ("sum(CAST(" + digit(value, place) + " AS BIGINT))") +
                filter;
    // The parser of the server does not read >> in a statement that contains the word array.
    const std::string carry = "shiftright(hv_a.c + hv_d + 33554432L, 26)";
    return "aggregate(array(" + sums +
           "), named_struct('c', 0L, 'v', 0D), (hv_a, hv_d) -> named_struct('c', " + carry +
           ", 'v', hv_a.v * " + powerOfTwo(-kBits) + " + (hv_a.c + hv_d - shiftleft(" + carry +
           ", 26))), hv_a -> (hv_a.c * " + powerOfTwo(kBits) + " + hv_a.v) * " +
           powerOfTwo(kGreatestPlace) + ")";
}

/// The sum of Reals; missing without finite values. `$1` is the column.
std::string realSum(const std::string& value)
{
    constexpr int kScale = 64; // the sum of the greatest doubles does not overflow
    const std::string limit = powerOfTwo(kGreatestPlace + kBits);
    const std::string small = " FILTER (WHERE abs(" + value + ") < " + limit + ")";
    const std::string great = " FILTER (WHERE abs(" + value + ") >= " + limit + " AND abs(" +
                              value + ") < " HV_SPARK_INFINITY ")";
    const std::string rest =
        value + " - " + inUnits(value, kLeastPlace) + " * " + powerOfTwo(kLeastPlace);
    const std::string greatSum = "sum(" + value + " * " + powerOfTwo(-kScale) + ")" + great;
    const std::string smallSum = sumOfDigits(value, small) + " + sum(" + rest + ")" + small;
    return "CASE WHEN " + greatSum + " IS NULL THEN " + smallSum + " ELSE coalesce(" + smallSum +
           ", 0D) + " + greatSum + " * " + powerOfTwo(kScale) + " END";
}

/// The quotient of a sum and a count, between the least and the greatest value. A sum beyond the
/// range of a Real makes it infinite.
std::string mean(const std::string& sum, const std::string& value)
{
    return sparkSql(
        HV_SPARK_LET("hv_m", "named_struct('s', $1, 'n', count($2), 'l', min($2), 'g', max($2))",
                     "CASE WHEN abs(hv_m.s) < " HV_SPARK_INFINITY
                     " THEN greatest(hv_m.l, least(hv_m.g, hv_m.s / hv_m.n)) ELSE hv_m.s END"),
        {sum, value});
}

/// A function of the spread. The squares of large numbers exceed the range of a double, and those
/// of tiny ones become 0, so the values are scaled. `factor` is a power of two, `back` undoes it.
std::string spread(const char* function, const std::string& value, int dimension)
{
    constexpr int kScale = 700;
    constexpr int kFar = 400;
    const auto scaled = [&](int exponent) {
        const std::string back = " * " + powerOfTwo(-exponent);
        return std::string(function) + "(" + value + " * " + powerOfTwo(exponent) + ")" + back +
               (dimension == 2 ? back : "");
    };
    const std::string greatest = "max(abs(" + value + "))";
    return "CASE WHEN " + greatest + " >= " + powerOfTwo(kFar) + " THEN " + scaled(-kScale) +
           " WHEN " + greatest + " < " + powerOfTwo(-kFar) + " THEN " + scaled(kScale) + " ELSE " +
           function + "(" + value + ") END";
}

std::string quantile(const std::string& value, std::int64_t centile)
{
    return "percentile(" + value + ", " + std::to_string(centile) + " / 100D)";
}

} // namespace

std::string SparkDialect::aggregate(const AggregateCall& call) const
{
    const bool isReal = call.type == ValueType::Real;
    std::string value = isReal ? finiteReal(call.column) : call.column;
    const std::string real = isReal ? value : cast(value, ValueType::Real);
    switch (call.function) {
    case Aggregate::Key:
        return value;
    case Aggregate::Count:
        return "count(" + value + ")";
    case Aggregate::Sum:
        return isReal ? realSum(call.column) : sparkSql(kIntegerSum, {value});
    case Aggregate::Mean:
        return isReal ? mean(realSum(call.column), value)
                      : mean(cast(sparkSql(kIntegerSum, {value}), ValueType::Real), real);
    case Aggregate::Least:
        return "min(" + value + ")";
    case Aggregate::Greatest:
        return "max(" + value + ")";
    case Aggregate::Deviation:
        return isReal ? spread("stddev_samp", value, 1) : "stddev_samp(" + real + ")";
    case Aggregate::Variance:
        return isReal ? spread("var_samp", value, 2) : "var_samp(" + real + ")";
    case Aggregate::Median:
        return quantile(real, 50);
    case Aggregate::Percentile:
        return quantile(real, call.centile);
    case Aggregate::First:
        return "min_by(" + value + ", " + call.number + ")";
    case Aggregate::Last:
        break;
    }
    return "max_by(" + value + ", " + call.number + ")";
}

} // namespace EmbeddedHV
