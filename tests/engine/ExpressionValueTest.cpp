#include <span>
#include <sstream>
#include <tuple>
#include <vector>

#include "DatabaseEvaluator.h"

namespace EmbeddedHV {
namespace {

using ExpressionValue = DatabaseEvaluator;

/// A body, and its value and type.
using ValueCase = std::pair<const char*, const char*>;

constexpr ValueCase kConstants[] = {
    {"5", "5:Integer"},
    {"-9223372036854775808", "-9223372036854775808:Integer"},
    {"9223372036854775807", "9223372036854775807:Integer"},
    {"0.1", "0.1:Real"},
    {"1e-300", "1e-300:Real"},
    {"1.7976931348623157e308", "1.7976931348623157e+308:Real"},
    {R"("it's \"q\" \\ é")", "it's \"q\" \\ é:String"},
    {R"("' || x --")", "' || x --:String"},
    {"length(\"a\\u0000b\\u0000\")", "4:Integer"},
    {"[]", "[]:List"},
    {"[x.i, 2.5, null]", "[7.0, 2.5, NULL]:List"},
};

constexpr ValueCase kReading[] = {
    {"9223372036854775808", "9.223372036854776e+18:Real"},
    {"-9223372036854775808 ** 2", "-8.507059173023462e+37:Real"},
    {"1E-400", "0.0:Real"},
    {"1.5e+2", "150.0:Real"},
    {R"("a\"b\\\/\u00e9\ud83d\ude00\n")", "a\"b\\/é😀\n:String"},
    {"\"a\tb\"", "a\tb:String"},
    {"1 + 2 * 3 - 4", "3:Integer"},
    {"10 - 4 - 2 * 3", "0:Integer"},
    {"10 / 2 % 3", "2.0:Real"},
    {"(1 + 2) * 3", "9:Integer"},
    {"2 ** -1", "0.5:Real"},
    {"if (x.i > 5) -1 else x.i + 1", "-1:Integer"},
};

constexpr ValueCase kArithmetic[] = {
    {"x.i + x.j * 3", "1:Integer"},
    {"2000000000 + 2000000000", "4000000000:Integer"}, // beyond 32 bits
    {"x.i + x.r", "9.5:Real"},
    {"x.i / 2", "3.5:Real"},
    {"6 / 2", "3.0:Real"},
    {"x.i % 4", "3:Integer"},
    {"-7 % 4", "-3:Integer"},
    {"-9223372036854775808 % -1", "0:Integer"},
    {"7.5 % 2", "1.5:Real"},
    {"2 ** 10", "1024.0:Real"},
    {"2 ** 3 ** 2", "512.0:Real"},
    {"-2 ** 2", "-4.0:Real"},
    {"- -x.i", "7:Integer"},
    {"-x.r - -1", "-1.5:Real"},
    {"x.s + \"!\"", "Ab c!:String"},
    {"x.`a \"field` + 1", "2:Integer"},
    {"9223372036854775807 + 1",
     "Out of Range Error: Overflow in addition of INT64 (9223372036854775807 + 1)!"},
};

constexpr ValueCase kConditionals[] = {
    {"if (x.i > 5) 1 else 2.5", "1.0:Real"},
    {"if (x.mi > 9) \"a\" else \"b\"", "b:String"},
    {"if (x.i > 9) 1 else if (x.i > 6) 2 else 3", "2:Integer"},
    {"if (x.i > 9) null else x.d", "2024-02-29:Date"},
    {"if (true) x.d else x.ts", "2024-02-29 00:00:00:Timestamp"},
    {"(if (x.i > 5) 10 else 20) + 1", "11:Integer"},
    {"if (null) 1 else 2", "2:Integer"},
};

/// Values and types, and the bodies that have them.
const std::pair<const char*, std::vector<const char*>> kShared[] = {
    {"true:Boolean",
     {"true", "true || false && false", "x.i > 6.5 && x.i <= 7", "x.i == 7.0", "x.s < \"B\"",
      "x.d < x.ts", "x.t >= time(3, 4, 5.5)", "x.l == [1.5, 2]", "true != false",
      "null || x.i == 7", "x.i == 1 || x.i == 2 || x.i == 7 && x.j < 0"}},
    {"missing:null", {"null", "if (true) null else null"}},
    {"false:Boolean",
     {"!false && false || false", "x.s == \"ab c\"", "x.ts == x.d", "x.d != date(2024, 2, 29)",
      "false && null"}},
    {"missing:Integer", {"if (false) if (true) 1 else 2", "x.i % 0", "x.mi + 1", "null + 1"}},
    {"missing:Real",
     {"x.i / 0", "0 / 0", "x.r / 0.0", "x.r % 0", "(-8) ** 0.5", "null + null", "-null"}},
    {"missing:String", {"x.s + x.ms", "if (x.i > 9) \"a\""}},
    {"missing:Boolean",
     {"x.mi == null", "x.mi > 1", "!(x.mi > 1)", "null && true", "null || null"}},
};

TEST_F(ExpressionValue, BodiesGiveTheValuesOfThePage)
{
    for (const auto cases :
         {std::span<const ValueCase>(kConstants), {kReading}, {kArithmetic}, {kConditionals}})
        for (const auto& [body, value] : cases)
            EXPECT_EQ(valueOf(body), value) << body;
    for (const auto& [value, bodies] : kShared)
        for (const char* body : bodies)
            EXPECT_EQ(valueOf(body), value) << body;
}

TEST_F(ExpressionValue, Definitions)
{
    const char* definitions = "val limit = 5 val twice = v => v * 2 "
                              "val sum = (a: Number, b: Number) => a + b "
                              "val score = r => sum(r.i, twice(r.r)) "
                              "val round = 3 val größe2 = 3 val _a1 = 2 val limitText = \"limit\" "
                              "val above = v => v > limit";
    const ValueCase cases[] = {
        {"x.i > limit", "true:Boolean"},
        {"twice(twice(x.i))", "28:Integer"},
        {"sum(twice(1), x.r)", "4.5:Real"},
        {"sum(null, 1)", "missing:Integer"},
        {"score(x)", "12.0:Real"},
        {"above(x.j)", "false:Boolean"},
        {"round(x.r) + round", "6.0:Real"}, // a value of the same name leaves the function alone
        {"limitText + \"!\"", "limit!:String"},
        {"größe2 * _a1", "6:Integer"},
        {"twice(v)", "step filterRecords, line 1, column 19: the name 'v' is neither a parameter "
                     "nor the definition of an expression"},
    };
    for (const auto& [body, value] : cases)
        EXPECT_EQ(valueOf(body, definitions), value) << body;
    EXPECT_EQ(run(compile("limit => x => x.i", definitions)), "7"); // parameters hide definitions
}

TEST_F(ExpressionValue, FieldLambdasGiveWhatAFieldCanHold)
{
    const std::tuple<const char*, const char*, const char*, ValueType> cases[] = {
        {"ctx => x => (\"F 1\", x.i > 5)", "F 1", "1", ValueType::Integer},
        {"ctx => x => (\"F\", x.mi > 5)", "F", "missing", ValueType::Integer},
        {"ctx => x => (\"F\", null)", "F", "missing", ValueType::Real},
        {"ctx => x => (\"F\", 1e308 * 10)", "F", "missing", ValueType::Real},
        {"ctx => x => (name, x.r)", "named", "2.5", ValueType::Real},
        {"ctx => x => (\"F\", [x.r, x.i])", "F", "[2.5, 7.0]", ValueType::List},
        {"ctx => x: {i: Int, r: Real, s: Char, ts: Timestamp, l: [Number], j: Number, d: Any, \"a "
         "\\\"field\": Int} => "
         "(\"F\", x.s)",
         "F", "Ab c", ValueType::String},
    };
    for (const auto& [lambda, field, value, type] : cases) {
        SCOPED_TRACE(lambda);
        std::string named;
        const SqlExpression compiled = compileField(lambda, named, "val name = \"named\"");
        EXPECT_EQ(named, field);
        EXPECT_EQ(run(compiled), value);
        EXPECT_EQ(compiled.type, type);
    }
}

/// What the parser lets through must run, and not only compile.
TEST_F(ExpressionValue, DeepAndLongExpressionsRun)
{
    std::ostringstream sum;
    std::ostringstream nested;
    std::ostringstream recode;
    std::ostringstream any;
    sum << "x.i";
    recode << "if (x.i == 0) 0";
    any << "x.i == 0";
    for (int n = 1; n < 490; ++n) {
        sum << " + 1";
        nested << "(1 + ";
        recode << " else if (x.i == " << n << ") " << n * 10;
    }
    nested << "x.i" << std::string(489, ')');
    for (int n = 1; n < 3000; ++n)
        any << " || x.i == " << n;
    EXPECT_EQ(valueOf(sum.str()), "496:Integer");
    EXPECT_EQ(valueOf(nested.str()), "496:Integer");
    EXPECT_EQ(valueOf(recode.str()), "70:Integer");
    EXPECT_EQ(valueOf(any.str()), "true:Boolean");
}

} // namespace
} // namespace EmbeddedHV
