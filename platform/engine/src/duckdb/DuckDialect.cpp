#include "duckdb/DuckDialect.h"

#include <array>
#include <charconv>

#include "DataFileNames.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

/// In the order of ValueType.
constexpr const char* kTypeNames[] = {"BIGINT",    "DOUBLE",  "VARCHAR",  "DATE",  "TIME",
                                      "TIMESTAMP", "BOOLEAN", "DOUBLE[]", "DOUBLE"};

/// In the order of PatternField.
constexpr std::string_view kPatternFormats[] = {"",   "%Y", "%y", "%m", "%b", "%B",
                                                "%d", "%j", "%a", "%A", "%H", "%I",
                                                "%M", "%S", "%g", "%f", "%p"};

void appendLiteral(const std::string& text, std::string& format)
{
    for (const char c : text) {
        if (c == '%')
            format += '%';
        format += c;
    }
}

} // namespace

std::string DuckDialect::name(const std::string& name) const
{
    return quotedIdentifier(name);
}

std::string DuckDialect::literal(const std::string& text) const
{
    return quotedLiteral(text);
}

std::string DuckDialect::literal(std::int64_t value) const
{
    // The database would read a plain 5 as a 32-bit integer.
    return "CAST(" + std::to_string(value) + " AS BIGINT)";
}

std::string DuckDialect::literal(double value) const
{
    // The exponent makes the database read the number as a double, not as a decimal. The shortest
    // digits give the same double back.
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific)
                         .ptr;
    return {buffer.data(), end};
}

const char* DuckDialect::typeName(ValueType type) const
{
    return kTypeNames[static_cast<std::size_t>(type)];
}

std::string DuckDialect::pattern(const DateTimePattern& pattern) const
{
    std::string format;
    for (const PatternPart& part : pattern)
        if (part.field == PatternField::Literal)
            appendLiteral(part.text, format);
        else
            format += kPatternFormats[static_cast<std::size_t>(part.field)];
    return quotedLiteral(format);
}

std::string DuckDialect::remainder(const std::string& left, const std::string& right) const
{
    // The database computes the quotient for the remainder. That of the least integer and -1
    // overflows BIGINT.
    return "CAST(CAST(" + left + " AS HUGEINT) % " + right + " AS BIGINT)";
}

std::string DuckDialect::power(const std::string& base, const std::string& exponent) const
{
    return "NULLIF(pow(" + base + ", " + exponent + "), CAST('nan' AS DOUBLE))";
}

std::string DuckDialect::list(const std::string& elements) const
{
    return "CAST([" + elements + "] AS DOUBLE[])";
}

std::string DuckDialect::finiteReal(const std::string& value) const
{
    return "CASE WHEN isfinite(" + value + ") THEN " + value + " END";
}

std::string DuckDialect::orderedReal(const std::string& value) const
{
    return "nullif(" + value + ", 'nan'::DOUBLE)";
}

const DuckDialect& duckDialect()
{
    static const DuckDialect dialect;
    return dialect;
}

} // namespace EmbeddedHV
