#include "expression/SqlText.h"

#include <array>
#include <charconv>

namespace EmbeddedHV {
namespace {

std::string quoted(const std::string& text, char quote)
{
    std::string result(1, quote);
    for (const char c : text) {
        if (c == quote)
            result += quote;
        result += c;
    }
    return result + quote;
}

} // namespace

std::string quotedIdentifier(const std::string& name)
{
    return quoted(name, '"');
}

std::string quotedLiteral(const std::string& text)
{
    std::size_t zero = text.find('\0');
    if (zero == std::string::npos)
        return quoted(text, '\'');
    // SQL goes to the database as a C string, so a zero character has to be built there.
    std::string result = "(";
    std::size_t begin = 0;
    for (; zero != std::string::npos; zero = text.find('\0', begin)) {
        result += quoted(text.substr(begin, zero - begin), '\'') + " || chr(0) || ";
        begin = zero + 1;
    }
    return result + quoted(text.substr(begin), '\'') + ")";
}

SqlExpression sqlConstant(std::int64_t value)
{
    return {"CAST(" + std::to_string(value) + " AS BIGINT)", ValueType::Integer};
}

SqlExpression sqlConstant(double value)
{
    // With an exponent, the database reads a number as a double, and the shortest digits that
    // name it give the same double back.
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
