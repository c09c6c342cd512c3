#include "expression/ValueTypes.h"

#include "DataFileNames.h"
#include "ErrorIds.h"

namespace EmbeddedHV {
namespace {

using language::SimpleType;
using language::Type;

/// In the order of ValueType.
constexpr const char* kWords[] = {"Integer",   "Real",    "String", "Date", "Time",
                                  "Timestamp", "Boolean", "List",   "null"};

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
    return kWords[static_cast<std::size_t>(type)];
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
