#include "expression/ValueTypes.h"

#include "ErrorIds.h"

namespace EmbeddedHV {
namespace {

using language::SimpleType;
using language::Type;

struct TypeWords
{
    const char* word;
    const char* sqlName;
};

/// In the order of ValueType. A null without a context is a number.
constexpr TypeWords kWords[] = {
    {"Integer", "BIGINT"},  {"Real", "DOUBLE"},   {"String", "VARCHAR"},
    {"Date", "DATE"},       {"Time", "TIME"},     {"Timestamp", "TIMESTAMP"},
    {"Boolean", "BOOLEAN"}, {"List", "DOUBLE[]"}, {"null", "DOUBLE"},
};

bool fitsSimple(SimpleType declared, ValueType actual)
{
    switch (declared) {
    case SimpleType::Any:
        return true;
    case SimpleType::Number:
        return isNumber(actual);
    case SimpleType::String:
    case SimpleType::Char:
        return actual == ValueType::String;
    case SimpleType::Int:
        return actual == ValueType::Integer;
    case SimpleType::Real:
        return actual == ValueType::Real;
    case SimpleType::Bool:
        return actual == ValueType::Boolean;
    case SimpleType::Time:
        return actual == ValueType::Time;
    case SimpleType::Date:
        return actual == ValueType::Date;
    case SimpleType::Timestamp:
        return actual == ValueType::Timestamp;
    }
    return false;
}

} // namespace

const char* wordOf(ValueType type)
{
    return kWords[static_cast<std::size_t>(type)].word;
}

const char* sqlNameOf(ValueType type)
{
    return kWords[static_cast<std::size_t>(type)].sqlName;
}

bool isNumber(ValueType type)
{
    return type == ValueType::Integer || type == ValueType::Real;
}

std::optional<ValueType> commonType(ValueType left, ValueType right)
{
    if (converts(left, right))
        return right;
    if (converts(right, left))
        return left;
    return std::nullopt;
}

bool converts(ValueType from, ValueType to)
{
    return from == to || from == ValueType::Null ||
           (from == ValueType::Integer && to == ValueType::Real) ||
           (from == ValueType::Date && to == ValueType::Timestamp);
}

std::string sqlAs(const SqlExpression& expression, ValueType type)
{
    if (expression.type == type)
        return expression.sql;
    return "CAST(" + expression.sql + " AS " + sqlNameOf(type) + ")";
}

const char* kindOfPair(ValueType first, ValueType second)
{
    const bool isDateAndText = first == ValueType::Date && second == ValueType::String;
    return isDateAndText ? kinds::kDateAndText : "";
}

bool fits(const Type& declared, ValueType actual)
{
    if (declared.kind == Type::Kind::Simple)
        return fitsSimple(declared.simple, actual);
    return declared.kind == Type::Kind::List && actual == ValueType::List &&
           fits(declared.elements.front(), ValueType::Real);
}

} // namespace EmbeddedHV
