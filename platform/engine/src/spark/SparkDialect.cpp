#include "spark/SparkDialect.h"

#include <array>
#include <charconv>
#include <cmath>

#include "spark/SparkSql.h"

namespace EmbeddedHV {
namespace {

/// In the order of ValueType.
constexpr const char* kSparkTypes[] = {"BIGINT",  "DOUBLE",        "STRING",
                                       "DATE",    "TIME(6)",       "TIMESTAMP_NTZ",
                                       "BOOLEAN", "ARRAY<DOUBLE>", "DOUBLE"};

/// \u0024 for a dollar sign.
std::string escapeOf(char c)
{
    constexpr const char* kDigits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    return std::string("\\u00") + kDigits[code >> 4] + kDigits[code & 15];
}

} // namespace

std::string sparkSql(std::string_view sql, std::initializer_list<std::string> arguments)
{
    std::string text;
    for (std::size_t i = 0; i < sql.size(); ++i)
        if (sql[i] == '$')
            text += arguments.begin()[sql[++i] - '1'];
        else
            text += sql[i];
    return text;
}

std::string sparkPowerOfTwo(int exponent)
{
    return sparkDialect().literal(std::ldexp(1.0, exponent));
}

std::string SparkDialect::name(const std::string& name) const
{
    std::string result = "`";
    for (const char c : name)
        result += c == '`' ? std::string("``") : std::string(1, c);
    return result + "`";
}

std::string SparkDialect::literal(const std::string& text) const
{
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\')
            result += std::string("\\") + c;
        // The server replaces ${...} before it parses a statement, and a statement is one line of
        // its log.
        else if (c == '$' || (c >= 0 && c < ' '))
            result += escapeOf(c);
        else
            result += c;
    }
    return result + "'";
}

std::string SparkDialect::literal(std::int64_t value) const
{
    // The digits of the least integer alone do not fit in a BIGINT.
    return "CAST(" + std::to_string(value) + " AS BIGINT)";
}

std::string SparkDialect::literal(double value) const
{
    // The suffix makes the server read a double. The shortest digits give the same double back.
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific)
                         .ptr;
    return std::string(buffer.data(), end) + "D";
}

const char* SparkDialect::typeName(ValueType type) const
{
    return kSparkTypes[static_cast<std::size_t>(type)];
}

std::string SparkDialect::remainder(const std::string& left, const std::string& right) const
{
    return "(" + left + " % " + right + ")";
}

std::string SparkDialect::power(const std::string& base, const std::string& exponent) const
{
    return sparkSql(HV_SPARK_POWER("$1", "$2"), {base, exponent});
}

std::string SparkDialect::list(const std::string& elements) const
{
    return "CAST(array(" + elements + ") AS ARRAY<DOUBLE>)";
}

std::string SparkDialect::finiteReal(const std::string& value) const
{
    return "CASE WHEN abs(" + value + ") < " HV_SPARK_INFINITY " THEN " + value + " END";
}

std::string SparkDialect::orderedReal(const std::string& value) const
{
    return "nullif(" + value + ", " HV_SPARK_NAN ")";
}

const SparkDialect& sparkDialect(RealSums sums)
{
    static const SparkDialect exact(RealSums::Exact);
    static const SparkDialect fast(RealSums::Double);
    return sums == RealSums::Exact ? exact : fast;
}

} // namespace EmbeddedHV
