#include "expression/SqlText.h"

#include <array>
#include <charconv>

#include "DataFileNames.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
SqlExpression sqlConstant(std::int64_t value)
{
    return {"CAST(" + std::to_string(value) + " AS BIGINT)", ValueType::Integer};
}

SqlExpression sqlConstant(double value)
{
    // The exponent makes the database read the number as a double. The shortest digits give the
    // same double back.
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific)
                         .ptr;
    return {std::string(buffer.data(), end), ValueType::Real};
}

SqlExpression sqlConstant(bool value)
{
    return {value ? "TRUE" : "FALSE", ValueType::Boolean};
}

SqlExpression sqlConstant(const std::string& text)
{
    return {quotedLiteral(text), ValueType::String};
}

SqlExpression sqlNull()
{
    return {"NULL", ValueType::Null};
}

} // namespace EmbeddedHV
