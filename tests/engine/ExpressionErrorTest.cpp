#include <sstream>
#include <tuple>

#include "DatabaseEvaluator.h"
#include "duckdb/DuckFaults.h"

namespace EmbeddedHV {
namespace {

using ExpressionError = DatabaseEvaluator;

/// Bodies follow "ctx => x => ", so their first column is 13. Columns of faults in
/// definitions count in this text.
constexpr const char* kDefinitions =
    "val conf = {\"a\": 1} val loop = v => loop(v) val circle = circle + 1 val one = v => v "
    "val typed = (a: String) => a val high = (r: {i: Real}) => r.i";

TEST_F(ExpressionError, NamesStepPositionAndThing)
{
    // The text follows the step and the line.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"x.S > 1", errors::kExpressionField,
         "column 15: the records have no field \"S\"; did you mean \"s\"?"},
        {"x.somethingElse", errors::kExpressionField,
         "column 15: the records have no field \"somethingElse\""},
        {"rond(x.r)", errors::kUnknownFunction,
         "column 13: there is no function 'rond'; did you mean \"round\"?"},
        {"conf(1)", errors::kUnknownFunction, "column 13: 'conf' is an object, not a function"},
        {"y + 1", errors::kExpressionName,
         "column 13: the name 'y' is neither a parameter nor the definition of an expression"},
        {"x.i > ones", errors::kExpressionName,
         "column 19: the name 'ones' is neither a parameter nor the definition of an expression; "
         "did you mean \"one\"?"},
        {"x.i + x.s", errors::kOperandType,
         "column 17: '+' takes two numbers or two strings, found Integer (the field i) and String "
         "(the field s)"},
        {"x.d - 1", errors::kOperandType,
         "column 17: '-' takes two numbers, found Date (the field d) and Integer"},
        {"x.i && true", errors::kOperandType,
         "column 17: '&&' takes two booleans, found Integer (the field i) and Boolean"},
        {"x.s == 1", errors::kOperandType,
         "column 17: '==' takes two values of one type, found String (the field s) and Integer"},
        {"true < false", errors::kOperandType,
         "column 18: '<' takes values that have an order, found Boolean and Boolean"},
        {"!x.i", errors::kOperandType,
         "column 13: '!' takes a boolean, found Integer (the field i)"},
        {"-x.s", errors::kOperandType, "column 13: '-' takes a number, found String (the field s)"},
        {"if (x.i) 1 else 2", errors::kOperandType,
         "column 19: a condition is a boolean, found Integer (the field i)"},
        {"if (x.i > 1) 1 else \"a\"", errors::kOperandType,
         "column 21: the values of a conditional are of one type, found Integer and String"},
        {"[1, x.s]", errors::kOperandType,
         "column 13: a list holds numbers only, found String (the field s)"},
        {"padLeft(x.s, x.s, \" \")", errors::kOperandType,
         "column 13: padLeft takes (String, Integer, String), found (String (the field s), String "
         "(the field s), String)"},
        {"min(x.i, x.s)", errors::kOperandType,
         "column 13: min takes (Same...), found (Integer (the field i), String (the field s))"},
        {"toDate(x.s, x.s)", errors::kOperandType,
         "column 13: toDate takes (String), (String, Pattern), (Date) or (Timestamp), found "
         "(String (the field s), String (the field s))"},
        {"round(1, 2, 3)", errors::kArgumentCount,
         "column 13: round takes (Integer), (Real) or (Real, Integer), found (Integer, Integer, "
         "Integer)"},
        {"min()", errors::kArgumentCount, "column 13: min takes (Same...), found ()"},
        {"one(1, 2)", errors::kArgumentCount, "column 13: 'one' takes 1 arguments, found 2"},
        {"typed(x.i)", errors::kDeclaredType,
         "column 21: the parameter 'a' is declared as String, found Integer (the field i)"},
        {"high(x)", errors::kDeclaredType,
         "column 18: the field \"i\" is declared as Real but is Integer"},
        {"toDate(x.s, \"yyyy-QQ\")", errors::kPattern,
         "column 13: the pattern \"yyyy-QQ\" is wrong: 'QQ' has no meaning in it"},
        {"loop(x.i)", errors::kRecursion,
         "column 37: the definition of 'loop' uses itself; recursion is not allowed"},
        {"circle", errors::kRecursion,
         "column 58: the definition of 'circle' uses itself; recursion is not allowed"},
        {"x", errors::kNotAValue,
         "column 13: expected a value, found 'x', which is the whole record; a field of it is "
         "written x.name"},
        {"ctx + 1", errors::kNotAValue,
         "column 13: expected a value, found 'ctx', which is the execution context"},
        {"ctx.i", errors::kNotAValue,
         "column 17: only the record has fields; '.i' follows the name 'ctx'"},
        {"(1).i", errors::kNotAValue,
         "column 17: only the record has fields; '.i' follows a number"},
        {"(1,)", errors::kNotAValue, "column 13: expected a value, found a tuple"},
        {"()", errors::kNotAValue, "column 13: expected a value, found a tuple"},
        {"conf", errors::kNotAValue, "column 12: expected a value, found an object"},
        {"(v => v) == 1", errors::kNotAValue, "column 14: expected a value, found a lambda"},
    };
    for (const auto& [body, id, text] : cases) {
        const JobError error = errorOf(body, kDefinitions);
        EXPECT_EQ(error.id(), id) << body;
        EXPECT_EQ(error.text(), std::string("step filterRecords, line 1, ") + text) << body;
    }
}

TEST_F(ExpressionError, LambdasOfAnotherForm)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"x => 1", errors::kLambdaForm,
         "expected a lambda over a record, ctx => x => body, found a number"},
        {"(ctx, x) => x.i", errors::kLambdaForm,
         "expected a lambda over a record, ctx => x => body, found a lambda with 2 parameters"},
        {"() => 1", errors::kLambdaForm,
         "expected a lambda over a record, ctx => x => body, found a lambda with 0 parameters"},
        {"ctx => x: {i: (Int, Any)} => (\"F\", 1)", errors::kDeclaredType,
         "the field \"i\" is declared as (Int, Any) but is Integer"},
        {"ctx => x => x.i", errors::kLambdaForm,
         "expected a body of a field's name and a value, (\"F\", value), found the field i"},
        {"ctx => x => (\"F\", 1, 2)", errors::kLambdaForm,
         "expected a body of a field's name and a value, (\"F\", value), found a tuple"},
        {"ctx => x => (x.s, 1)", errors::kLambdaForm,
         "expected a body of a field's name and a value, (\"F\", value), found a tuple"},
        {"ctx => x => (\"\", 1)", errors::kLambdaForm,
         "expected a body of a field's name and a value, (\"F\", value), found a tuple"},
        {"ctx => x: {r: String} => (\"F\", 1)", errors::kDeclaredType,
         "the field \"r\" is declared as String but is Real"},
        {"ctx => x: {i: Real} => (\"F\", 1)", errors::kDeclaredType,
         "the field \"i\" is declared as Real but is Integer"},
        {"ctx => x: {l: [String]} => (\"F\", 1)", errors::kDeclaredType,
         "the field \"l\" is declared as [String] but is List"},
        {"ctx => x: {rr: Real} => (\"F\", 1)", errors::kExpressionField,
         "the records have no field \"rr\"; did you mean \"r\"?"},
        {"ctx => x: Real => (\"F\", 1)", errors::kDeclaredType,
         "the record is declared as Real, which is not a record type"},
    };
    for (const auto& [lambda, id, text] : cases) {
        std::string field;
        try {
            compileField(lambda, field);
            ADD_FAILURE() << lambda;
        } catch (const JobError& error) {
            EXPECT_EQ(error.id(), id) << lambda;
            EXPECT_EQ(error.text().substr(error.text().find(": ") + 2), text) << lambda;
        }
    }
}

TEST_F(ExpressionError, DefinitionsThatGrowWithoutEnd)
{
    std::ostringstream doubling;
    std::ostringstream deepening;
    doubling << "val f0 = v => v + v ";
    deepening << "val d0 = 1 ";
    for (int i = 1; i < 600; ++i) {
        doubling << "val f" << i << " = v => f" << i - 1 << "(v + v) ";
        deepening << "val d" << i << " = d" << i - 1 << " ";
    }
    EXPECT_EQ(errorOf("f60(x.i)", doubling.str()).id(), errors::kExpressionSize);
    EXPECT_EQ(errorOf("d599", deepening.str()).id(), errors::kExpressionSize);
}

TEST(QueryFaults, AnUnfinishedFileIsNamedByItsTarget)
{
    const JobError fault =
        faultOf(duckFault("IO Error: Cannot open file \"/a/.b.part\": Permission denied"),
                "read -> write", "/a/b", true);
    EXPECT_NE(fault.text().find("/a/b: the file cannot be written"), std::string::npos);
}

} // namespace
} // namespace EmbeddedHV
