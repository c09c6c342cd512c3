#include "expression/Operators.h"

#include <string_view>

#include "ErrorIds.h"
#include "expression/ValueTypes.h"

namespace EmbeddedHV {
namespace {

using language::BinaryOperator;
using language::UnaryOperator;

/// Operators that have the same rules for types.
enum class Family
{
    Logical,
    Equality,
    Order,
    Addition,
    Arithmetic,
    Division,
    Power
};

struct OperatorForm
{
    const char* symbol; ///< in a job
    const char* sql;
    Family family;
};

/// In the order of BinaryOperator.
constexpr OperatorForm kBinaryForms[] = {
    {"||", "OR", Family::Logical},  {"&&", "AND", Family::Logical}, {"==", "=", Family::Equality},
    {"!=", "<>", Family::Equality}, {"<", "<", Family::Order},      {"<=", "<=", Family::Order},
    {">", ">", Family::Order},      {">=", ">=", Family::Order},    {"+", "+", Family::Addition},
    {"-", "-", Family::Arithmetic}, {"*", "*", Family::Arithmetic}, {"/", "/", Family::Division},
    {"%", "%", Family::Division},   {"**", "", Family::Power},
};

/// A binary operator with its operands.
struct Operation
{
    const Dialect& dialect;
    BinaryOperator op;
    const Operand& left;
    const Operand& right;
    const Place& place;

    const OperatorForm& form() const { return kBinaryForms[static_cast<std::size_t>(op)]; }

    [[noreturn]] void fail(const std::string& wanted) const
    {
        place.fail(errors::kOperandType,
                   "'" + std::string(form().symbol) + "' takes " + wanted + ", found " +
                       left.description + " and " + right.description,
                   {.kind = kindOfPair(left.value.type, right.value.type)});
    }
    /// The common type of both operands. Fails if they have no common type.
    ValueType common(const std::string& wanted) const
    {
        const auto type = commonType(left.value.type, right.value.type);
        if (!type)
            fail(wanted);
        return *type;
    }
    SqlExpression infix(const char* sqlOperator, ValueType operands, ValueType result) const
    {
        return {"(" + dialect.as(left.value, operands) + " " + sqlOperator + " " +
                    dialect.as(right.value, operands) + ")",
                result};
    }
    /// The same for an operator that SQL applies from left to right. A chain of thousands of
    /// operands is written without nested parentheses, because parsers take long for them.
    SqlExpression chain(const char* sqlOperator, ValueType type) const
    {
        const SqlExpression& first = left.value;
        const bool continues =
            first.chain && std::string_view(first.chain) == sqlOperator && first.type == type;
        const std::string before =
            continues ? first.sql.substr(0, first.sql.size() - 1) : "(" + dialect.as(first, type);
        return {before + " " + sqlOperator + " " + dialect.as(right.value, type) + ")", type,
                sqlOperator};
    }
};

/// The common type of two numbers. Two nulls give Real.
ValueType numberType(const Operation& operation, const std::string& wanted = "two numbers")
{
    const ValueType type = operation.common(wanted);
    if (type == ValueType::Null)
        return ValueType::Real;
    if (!isNumber(type))
        operation.fail(wanted);
    return type;
}

SqlExpression compileLogical(const Operation& operation)
{
    const ValueType type = operation.common("two booleans");
    if (type != ValueType::Boolean && type != ValueType::Null)
        operation.fail("two booleans");
    return operation.chain(operation.form().sql, ValueType::Boolean);
}

SqlExpression compileComparison(const Operation& operation)
{
    const ValueType type = operation.common("two values of one type");
    const bool ordered = type != ValueType::Boolean && type != ValueType::List;
    if (operation.form().family == Family::Order && !ordered)
        operation.fail("values that have an order");
    return operation.infix(operation.form().sql, type, ValueType::Boolean);
}

SqlExpression compileAddition(const Operation& operation)
{
    constexpr const char* kWanted = "two numbers or two strings";
    if (operation.common(kWanted) == ValueType::String)
        return operation.chain("||", ValueType::String);
    const ValueType type = numberType(operation, kWanted);
    return operation.chain("+", type);
}

SqlExpression compileArithmetic(const Operation& operation)
{
    const ValueType type = numberType(operation);
    return operation.infix(operation.form().sql, type, type);
}

/// A division by zero gives a missing value.
SqlExpression compileDivision(const Operation& operation)
{
    const bool quotient = operation.op == BinaryOperator::Divide;
    const ValueType numbers = numberType(operation);
    // The quotient of two integers is a real, as statisticians expect. The remainder of two
    // integers is an integer.
    const ValueType type = quotient ? ValueType::Real : numbers;
    const std::string left = operation.dialect.as(operation.left.value, type);
    const std::string right =
        "NULLIF(" + operation.dialect.as(operation.right.value, type) + ", 0)";
    if (type != ValueType::Integer)
        return {"(" + left + " " + operation.form().sql + " " + right + ")", type};
    return {operation.dialect.remainder(left, right), type};
}

/// A result that is not a number, such as a root of a negative number, is missing.
SqlExpression compilePower(const Operation& operation)
{
    numberType(operation);
    const Dialect& dialect = operation.dialect;
    return {dialect.power(dialect.as(operation.left.value, ValueType::Real),
                          dialect.as(operation.right.value, ValueType::Real)),
            ValueType::Real};
}

} // namespace

SqlExpression compileUnary(const Dialect& dialect, UnaryOperator op, const Operand& operand,
                           const Place& place)
{
    const ValueType type = operand.value.type;
    if (op == UnaryOperator::Not) {
        if (!converts(type, ValueType::Boolean))
            place.fail(errors::kOperandType, "'!' takes a boolean, found " + operand.description);
        return {"(NOT " + dialect.as(operand.value, ValueType::Boolean) + ")", ValueType::Boolean};
    }
    if (!converts(type, ValueType::Real))
        place.fail(errors::kOperandType, "'-' takes a number, found " + operand.description);
    const ValueType number = type == ValueType::Null ? ValueType::Real : type;
    return {"(- " + dialect.as(operand.value, number) + ")", number};
}

SqlExpression compileBinary(const Dialect& dialect, BinaryOperator op, const Operand& left,
                            const Operand& right, const Place& place)
{
    const Operation operation{dialect, op, left, right, place};
    switch (operation.form().family) {
    case Family::Logical:
        return compileLogical(operation);
    case Family::Equality:
    case Family::Order:
        return compileComparison(operation);
    case Family::Addition:
        return compileAddition(operation);
    case Family::Arithmetic:
        return compileArithmetic(operation);
    case Family::Division:
        return compileDivision(operation);
    case Family::Power:
        break;
    }
    return compilePower(operation);
}

} // namespace EmbeddedHV
