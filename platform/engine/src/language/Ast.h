#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// The tree of a job text. docs/hvl.md defines the language.
namespace EmbeddedHV::language {

/// Where a piece of text begins; both count from 1, columns in characters.
struct Position
{
    int line = 0;
    int column = 0;

    /// "line 3, column 14", as messages say it.
    std::string text() const
    {
        return "line " + std::to_string(line) + ", column " + std::to_string(column);
    }
};

struct Expression;
struct Type;
using ExpressionPtr = std::unique_ptr<Expression>;
using TypePtr = std::unique_ptr<Type>;

/// The types that a lambda's parameter may be declared with.
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

/// A declared type: a simple one, a list of one element type, a tuple, or a record of named fields.
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
/// A JSON object; members in the order of the text.
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
/// The operators before one operand: `-` and `!`.
enum class UnaryOperator
{
    Minus,
    Not
};
/// An operand with an operator before it.
struct Unary
{
    UnaryOperator op;
    ExpressionPtr operand;
};
/// The operators between two operands, those that bind least first.
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
/// Two operands with an operator between them.
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
    ExpressionPtr otherwise; ///< null where the text has no else
};
/// One parameter of a lambda.
struct Parameter
{
    std::string name;
    TypePtr type; ///< null where the text declares none
};
/// `(a, b) => body`
struct Lambda
{
    std::vector<Parameter> parameters;
    ExpressionPtr body;
};

/// Any expression, and where it begins in the text, for messages.
struct Expression
{
    using Value = std::variant<Null, bool, std::int64_t, double, std::string, List, Tuple, Object,
                               Name, Member, Call, Unary, Binary, Conditional, Lambda>;
    Value value;
    Position position;
};

/// One argument of a step: an open place, an input named by tag, or an expression.
struct Argument
{
    /// Which of the three it is, and so which members have something in them.
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

/// One step of a chain as it is written; what it means is the plan's business.
struct Step
{
    std::string nameSpace; ///< empty for a step of the engine's own
    std::string name;
    std::vector<Argument> arguments;
    Position position;

    /// "ns:name" or "name", as messages show it.
    std::string fullName() const { return nameSpace.empty() ? name : nameSpace + ":" + name; }
};

/// Steps joined by `->`, fed by a named chain or by nothing.
struct Pipeline
{
    std::string input; ///< the name of a chain; empty if the first step starts the pipeline
    std::vector<Step> steps;
    Position position;
};

/// `val name = value`: a chain of steps or an expression, for other places of the job to name.
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

/// The definitions that bind values, by name. The expressions stay the program's.
using Definitions = std::map<std::string, const Expression*>;

} // namespace EmbeddedHV::language
