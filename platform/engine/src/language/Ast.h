#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// The syntax tree of a job text. docs/hvl.md defines the language.
namespace EmbeddedHV::language {

/// The start of a piece of text. Lines and columns count from 1; columns count characters.
struct Position
{
    int line = 0;
    int column = 0;

    /// The form in messages: "line 3, column 14".
    std::string text() const
    {
        return "line " + std::to_string(line) + ", column " + std::to_string(column);
    }
};

struct Expression;
struct Type;
using ExpressionPtr = std::unique_ptr<Expression>;
using TypePtr = std::unique_ptr<Type>;

/// The types that a lambda's parameter may have.
enum class SimpleType
{
    Any,
    Number,
    String,
    Int,
    Real,
    Char,
    Bool,
    Time,
    Date,
    Timestamp
};

/// A declared type: a simple type, a list of one element type, a tuple, or a record of named
/// fields.
struct Type
{
    /// Which of the four it is.
    enum class Kind
    {
        Simple,
        List,
        Tuple,
        Record
    };
    Kind kind = Kind::Simple;
    SimpleType simple = SimpleType::Any;
    std::vector<Type> elements;     ///< List: one. Tuple: all. Record: one for each name.
    std::vector<std::string> names; ///< Record only.
};

/// `null`
struct Null
{
};
/// `[a, b]`
struct List
{
    std::vector<ExpressionPtr> elements;
};
/// `(a, b)`
struct Tuple
{
    std::vector<ExpressionPtr> elements;
};
/// A JSON object. The members keep the order of the text.
struct Object
{
    std::vector<std::pair<std::string, ExpressionPtr>> members;
};
/// A parameter or a definition, by its name.
struct Name
{
    std::string name;
};
/// `target.field`
struct Member
{
    ExpressionPtr target;
    std::string field;
};
/// `function(a, b)`
struct Call
{
    std::string function;
    std::vector<ExpressionPtr> arguments;
};
/// The operators with one operand: `-` and `!`.
enum class UnaryOperator
{
    Minus,
    Not
};
/// A unary operator with its operand.
struct Unary
{
    UnaryOperator op;
    ExpressionPtr operand;
};
/// The operators with two operands, from lowest to highest precedence.
enum class BinaryOperator
{
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Power
};
/// A binary operator with its operands.
struct Binary
{
    BinaryOperator op;
    ExpressionPtr left;
    ExpressionPtr right;
};
/// `if (condition) then else otherwise`
struct Conditional
{
    ExpressionPtr condition;
    ExpressionPtr then;
    ExpressionPtr otherwise; ///< null if there is no else
};
/// One parameter of a lambda.
struct Parameter
{
    std::string name;
    TypePtr type; ///< null if no type is declared
};
/// `(a, b) => body`
struct Lambda
{
    std::vector<Parameter> parameters;
    ExpressionPtr body;
};

/// An expression, and its position for messages.
struct Expression
{
    using Value = std::variant<Null, bool, std::int64_t, double, std::string, List, Tuple, Object,
                               Name, Member, Call, Unary, Binary, Conditional, Lambda>;
    Value value;
    Position position;
};

/// An argument of a step: a placeholder, a tagged input, or an expression.
struct Argument
{
    /// The kind of argument. It determines which members are used.
    enum class Kind
    {
        Open,
        Tagged,
        Value
    };
    Kind kind = Kind::Open;
    std::string tag;     ///< Tagged
    std::string input;   ///< Tagged: the name of a chain
    ExpressionPtr value; ///< Value
    Position position;
};

/// A step of a chain, as the text has it. The planner gives it a meaning.
struct Step
{
    std::string nameSpace; ///< empty for a built-in step
    std::string name;
    std::vector<Argument> arguments;
    Position position;

    /// "ns:name" or "name", for messages.
    std::string fullName() const { return nameSpace.empty() ? name : nameSpace + ":" + name; }
};

/// Steps joined by `->`. The input is a named chain or nothing.
struct Pipeline
{
    std::string input; ///< the name of a chain; empty if the first step starts the pipeline
    std::vector<Step> steps;
    Position position;
};

/// `val name = value`: binds a chain of steps or an expression to a name.
struct Definition
{
    std::string name;
    std::variant<Pipeline, ExpressionPtr> value;
    Position position;
};

/// Definitions and statements in the order of the text.
struct Program
{
    std::vector<std::variant<Definition, Pipeline>> items;
};

/// The definitions that bind values, by name. The program owns the expressions.
using Definitions = std::map<std::string, const Expression*>;

} // namespace EmbeddedHV::language
