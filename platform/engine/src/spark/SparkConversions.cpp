#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kSecondsOfTime = "(time_diff('MICROSECOND', TIME '00:00:00', $1) / 1e6D)";
constexpr const char* kSecondsOfTimestamp =
    "(timestampdiff(MICROSECOND, TIMESTAMP_NTZ '1970-01-01 00:00:00', $1) / 1e6D)";

std::string sparkText(const std::string& value, ValueType type)
{
    switch (type) {
    case ValueType::Integer:
    case ValueType::Real:
        return sparkSql(HV_SPARK_NUMBER_TEXT("$1"), {value});
    case ValueType::Date:
        return sparkSql(HV_SPARK_DATE_TEXT("$1"), {value});
    case ValueType::Timestamp:
        return sparkSql(HV_SPARK_TIMESTAMP_TEXT("$1"), {value});
    default:
        return "CAST(" + value + " AS STRING)";
    }
}

} // namespace

std::string SparkDialect::listText(const std::string& list) const
{
    constexpr const char* kIsWhole =
        "forall($1, hv_n -> hv_n IS NOT NULL AND abs(hv_n) < " HV_SPARK_INFINITY ")";
    constexpr const char* kText =
        "concat('[', concat_ws(', ', transform($1, hv_n -> " HV_SPARK_NUMBER_TEXT(
            "hv_n") ")), ']')";
    const auto clause = [&](const std::string& condition, const std::string& numbers) {
        return " WHEN " + condition + " AND " + sparkSql(kIsWhole, {numbers}) + " THEN " +
               sparkSql(kText, {numbers});
    };
    return "CASE" + clause("size(" + list + ") > 0", list) +
           clause("size(" + list + ") = 3", "slice(" + list + ", 1, 2)") + " END";
}

std::string SparkDialect::exactly(const std::string& value, ValueType from, ValueType to) const
{
    const std::string cast = this->cast(value, to);
    // A cast to BIGINT gives the greatest integer for 2^63.
    if (from == ValueType::Integer && to == ValueType::Real)
        return "CASE WHEN " + cast + " < 9223372036854775808D AND CAST(" + cast +
               " AS BIGINT) = " + value + " THEN " + cast + " END";
    if (from == ValueType::Real && to == ValueType::Integer)
        return "CASE WHEN " + value + " >= -9223372036854775808D AND " + value +
               " < 9223372036854775808D AND rint(" + value + ") = " + value + " THEN " + cast +
               " END";
    if (from == ValueType::Timestamp && to == ValueType::Date)
        return "CASE WHEN CAST(" + cast + " AS TIMESTAMP_NTZ) = " + value + " THEN " + cast +
               " END";
    if (from == to)
        return value;
    return to == ValueType::String ? sparkText(value, from) : cast;
}

std::string SparkDialect::onModelScale(const std::string& value, ValueType type) const
{
    switch (type) {
    case ValueType::Date:
        return "datediff(" + value + ", DATE '1970-01-01')";
    case ValueType::Time:
        return sparkSql(kSecondsOfTime, {value});
    case ValueType::Timestamp:
        return sparkSql(kSecondsOfTimestamp, {value});
    default:
        return value;
    }
}

std::string SparkDialect::raised(const std::string& text, ValueType type) const
{
    return cast("raise_error(" + text + ")", type);
}

} // namespace EmbeddedHV
