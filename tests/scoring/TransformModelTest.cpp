#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "IMCVariable.h"
#include "MCMV.h"
#include "MCVarList.h"
#include "ValueRecord.h"
#include "scoring/Pmml.h"

namespace {

const double kMissing = MCMV::Missing();
/// The result of a row that cannot be scored.
const double kFails = std::numeric_limits<double>::infinity();

struct Row
{
    double x = 3;
    double y = -2;
    std::string s = "Gr\xc3\xbcn";
    double flag = 1;
    double day = 13550198400;    // 2012-03-04
    double moment = 13268586630; // 2003-04-01 14:30:30
};

std::string nameOf(const IMCVariable& variable)
{
    std::string name;
    variable.GetName(name);
    return name;
}

void give(const Row& row, const std::string& name, Value& value)
{
    if (name == "s")
        value = row.s;
    else
        value = name == "x"      ? row.x
                : name == "y"    ? row.y
                : name == "flag" ? row.flag
                : name == "day"  ? row.day
                                 : row.moment;
}

/// The first output of the model for a row, as a value; one that is not valid as kFails.
Value score(IMCScoreComputer& computer, const Row& row)
{
    MCVarList variables;
    EXPECT_FALSE(computer.GetInputs(variables).IsError());
    ValueRecord input(2);
    for (int i = 0; i < variables.Size(); ++i) {
        input.AddValue("", Value(0.0));
        give(row, nameOf(*variables.GetVarAt(i)), input[i]);
    }
    ValueRecord output(2);
    EXPECT_FALSE(computer.PrepareOutput(output).IsError());
    const bool fails = computer.Compute(input, output, 0).IsError();
    return fails || std::isnan(output[0].GetNumber()) ? Value(kFails) : output[0];
}

struct Case
{
    std::string expression;
    double expected;
    Row row = Row();
    std::string type = "double";
};

void expectNumbers(const std::vector<Case>& cases)
{
    for (const Case& each : cases) {
        SCOPED_TRACE(each.expression);
        std::string fault;
        const auto computer = read(pmml(derived(each.expression, each.type)), &fault);
        ASSERT_TRUE(computer) << fault;
        const double result = score(*computer, each.row).GetNumber();
        if (each.expected == kFails || each.expected == kMissing)
            EXPECT_EQ(result, each.expected);
        else
            EXPECT_NEAR(result, each.expected, 1e-12 * std::max(1.0, std::abs(each.expected)));
    }
}

const std::string X = field("x");
const std::string Y = field("y");
const std::string S = field("s");
const Row kNoX{kMissing};

TEST(TransformModel, Arithmetic)
{
    const auto one = [](const std::string& function, double expected, double x) {
        return Case{call(function, X), expected, {x}};
    };
    const auto two = [](const std::string& function, double expected, double x, double y) {
        return Case{call(function, X + Y), expected, {x, y}};
    };
    // By hand, and by Python's math and statistics.
    expectNumbers({
        two("+", 1, 3, -2),
        two("-", 5, 3, -2),
        two("*", -6, 3, -2),
        two("/", -1.5, 3, -2),
        two("/", kFails, 3, 0),
        two("modulo", 2, -7, 3),
        two("modulo", -2, 7, -3),
        two("modulo", kFails, 7, 0),
        two("pow", 0.7071067811865476, 2, -0.5),
        two("pow", kFails, -2, 0.5),
        two("hypot", 5, 3, 4),
        two("threshold", 1, 3, 2),
        two("threshold", 0, 2, 2),
        one("log10", -3, 0.001),
        one("log10", kFails, 0),
        one("ln", 2.302585092994046, 10),
        one("ln", kFails, -1),
        one("ln1p", 9.999999999500001e-11, 1e-10),
        one("sqrt", 1.4142135623730951, 2),
        one("sqrt", kFails, -2),
        one("abs", 2.5, -2.5),
        one("exp", 0.36787944117144233, -1),
        one("exp", kFails, 1000),
        one("expm1", 1.00000000005e-10, 1e-10),
        one("floor", -3, -2.5),
        one("ceil", -2, -2.5),
        one("round", -2, -2.5),
        one("round", 3, 2.5),
        one("round", 0, 0.49999999999999994),
        one("rint", 2, 2.5),
        one("sin", 0.8414709848078965, 1),
        one("atan", 1.1071487177940904, 2),
        one("tanh", 0.46211715726000974, 0.5),
        one("asin", kFails, 2),
        one("erf", 0.5204998778130465, 0.5),
        one("stdNormalCDF", 0.9750021048517796, 1.96),
        one("stdNormalPDF", 0.3520653267642995, 0.5),
        {call("normalCDF", X + constant("100") + constant("15")), 0.15865525393145707, {85}},
        {call("normalPDF", X + constant("100") + constant("15")), 0.016131381634609556, {85}},
        {call("normalCDF", X + Y + constant("0")), kFails},
        {call("+", X + field("flag")), 4},
    });
}

TEST(TransformModel, MissingAndInvalidValues)
{
    const std::string quotient = X + Y;
    const Row zero{3, 0};
    const std::string list = X + Y + constant("7") + constant("4");
    expectNumbers({
        {call("+", X + Y), kMissing, kNoX},
        {call("+", X + call("/", Y + constant("0"))), kFails, kNoX},
        {call("+' mapMissingTo='9", X + Y), 9, kNoX},
        {call("+' defaultValue='8", X + Y), 8, kNoX},
        {call("/' invalidValueTreatment='asMissing", quotient), kMissing, zero},
        {call("/' invalidValueTreatment='asMissing' defaultValue='8", quotient), 8, zero},
        {call("/' defaultValue='8", quotient), kFails, zero},
        {call("isMissing", call("/", quotient)), 0, zero},
        {call("isNotValid", call("/", quotient)), 1, zero},
        {call("isMissing", X), 1, kNoX},
        {call("isNotMissing", X), 0, kNoX},
        {call("isValid", X), 1},
        {"<FieldRef field='x' mapMissingTo='5'/>", 5, kNoX},
        {X, kFails, {std::numeric_limits<double>::quiet_NaN()}},
        // Aggregates leave missing values out.
        {call("sum", list), 9, kNoX},
        {call("avg", list), 3, kNoX},
        {call("product", list), -168, {3}},
        {call("min", list), -2},
        {call("max", list), 7, kNoX},
        {call("median", list), 3.5},
        {call("median", list), 4, kNoX},
        {call("min", X), kMissing, kNoX},
        {call("sum", X + call("/", Y + constant("0"))), kFails},
        {constant("5", "missing='true'"), kMissing},
    });
}

TEST(TransformModel, Logic)
{
    const std::string unknown = call("greaterThan", X + constant("1")); // with kNoX
    const std::string yes = call("equal", constant("1") + constant("1"));
    const std::string no = call("notEqual", constant("1") + constant("1"));
    const std::string dividing = call("greaterThan", call("/", Y + constant("0")) + X);
    const std::string branches = constant("10") + constant("20");
    expectNumbers({
        {call("and", yes + unknown), kMissing, kNoX},
        {call("and", no + unknown), 0, kNoX},
        {call("or", yes + unknown), 1, kNoX},
        {call("or", no + unknown), kMissing, kNoX},
        {call("and", yes + dividing), kFails},
        {call("or", yes + dividing), 1},
        {call("not", unknown), kMissing, kNoX},
        {call("not", field("flag")), 0},
        {call("if", yes + branches), 10},
        {call("if", no + branches), 20},
        {call("if", no + constant("10")), kMissing},
        {call("if", unknown + branches), kMissing, kNoX},
        {call("if' mapMissingTo='5", unknown + branches), 5, kNoX},
        {call("if", no + call("/", X + constant("0")) + Y), -2},
        {call("if' mapMissingTo='5", no + X + Y), -2, kNoX},
        {call("lessThan", X + Y), 0},
        {call("lessOrEqual", X + constant("3")), 1},
        {call("greaterOrEqual", X + constant("3")), 1},
        {call("equal", S + constant("Gr\xc3\xbcn")), 1},
        {call("lessThan", S + constant("H")), 1},
        {call("equal", S + constant("7")), 1, {3, 0, "7"}},
        {call("equal", field("flag") + constant("true")), 1},
        {call("equal", field("day") + constant("2012-03-04")), 1},
        {call("isIn", X + constant("2") + constant("3")), 1},
        {call("isNotIn", S + constant("a") + constant("b")), 1},
        {call("isIn", X + constant("2")), kMissing, kNoX},
        {call("isMissing", S), 1, {3, 0, ""}},
    });
}

TEST(TransformModel, TablesAndLines)
{
    const auto norm = [](const std::string& attributes) {
        return "<NormContinuous field='x' " + attributes +
               "><LinearNorm orig='0' norm='10'/><LinearNorm orig='2' norm='20'/>"
               "<LinearNorm orig='6' norm='0'/></NormContinuous>";
    };
    const std::string bins =
        "<Discretize field='x' mapMissingTo='-1' defaultValue='99'>"
        "<DiscretizeBin binValue='1'><Interval closure='openClosed' rightMargin='0'/>"
        "</DiscretizeBin><DiscretizeBin binValue='2'>"
        "<Interval closure='openOpen' leftMargin='0' rightMargin='5'/></DiscretizeBin>"
        "<DiscretizeBin binValue='3'><Interval closure='openOpen' leftMargin='5'/>"
        "</DiscretizeBin></Discretize>";
    const std::string map =
        "<MapValues outputColumn='out' mapMissingTo='-1' defaultValue='99'>"
        "<FieldColumnPair field='s' column='a'/><FieldColumnPair field='x' column='data:b'/>"
        "<InlineTable xmlns:data='d'><row><a>u</a><data:b>1</data:b><out>11</out></row>"
        "<row><a>u</a><data:b>2.0</data:b><out>12</out></row>"
        "<row><a>u</a><data:b>1</data:b><out>13</out></row></InlineTable></MapValues>";
    const std::string indicator = "<NormDiscrete field='s' value='u' mapMissingTo='0.5'/>";
    expectNumbers({
        {norm(""), 15, {1}},
        {norm(""), 20, {2}},
        {norm(""), 10, {4}},
        {norm(""), -5, {7}},
        {norm(""), 5, {-1}},
        {norm("outliers='asExtremeValues'"), 0, {7}},
        {norm("outliers='asExtremeValues'"), 10, {-1}},
        {norm("outliers='asMissingValues' mapMissingTo='4'"), 4, {7}},
        {norm("outliers='asMissingValues' mapMissingTo='4'"), 0, {6}},
        {norm("outliers='asMissingValues' mapMissingTo='4'"), 10, {0}},
        {norm("mapMissingTo='4'"), 4, kNoX},
        {norm(""), kMissing, kNoX},
        {bins, 1, {0}},
        {bins, 2, {4.9}},
        {bins, 99, {5}},
        {bins, 3, {5.1}},
        {bins, -1, kNoX},
        {map, 11, {1, 0, "u"}},
        {map, 12, {2, 0, "u"}},
        {map, 99, {3, 0, "u"}},
        {map, -1, {kMissing, 0, "u"}},
        {map, -1, {1, 0, ""}},
        {map, kFails, {std::numeric_limits<double>::quiet_NaN(), 0, "u"}},
        {indicator, 1, {0, 0, "u"}},
        {indicator, 0, {0, 0, "v"}},
        {indicator, 0.5, {0, 0, ""}},
        {"<NormDiscrete field='x' value='3.0'/>", 1},
    });
}

TEST(TransformModel, TypesAndDates)
{
    const auto since = [](const std::string& function, const std::string& name,
                          const std::string& year) {
        return call(function, field(name) + constant(year));
    };
    // By Python's datetime.
    expectNumbers({
        {since("dateDaysSinceYear", "day", "1960"), 19056},
        {since("dateDaysSinceYear", "day", "2013"), -303},
        {since("dateDaysSinceYear", "moment", "1970"), 12143},
        {since("dateSecondsSinceYear", "moment", "1960"), 1364826630},
        {since("dateSecondsSinceYear", "moment", "1960.5"), kFails},
        {call("dateSecondsSinceMidnight", field("moment")), 52230},
        {call("dateSecondsSinceMidnight", field("moment")), 86399.5, {0, 0, "", 1, 0, -0.5}},
        {field("day"), 19056, {}, "dateDaysSince[1960]"},
        {field("moment"), 1049207430, {}, "dateTimeSecondsSince[1970]"},
        {field("moment"), 12143, {}, "dateDaysSince[1970]"},
        {call("dateSecondsSinceMidnight", field("moment")), 52230, {}, "timeSeconds"},
        {constant("14:30:30", "dataType='time'"), 52230, {}, "timeSeconds"},
        {field("day"), 13550198400, {}, "date"},
        {field("moment"), 13268534400, {}, "date"},
        {constant("2012-03-04"), 13550198400, {}, "date"},
        {constant("14:30:30.5"), 52230.5, {}, "time"},
        {X, 3, {2.5}, "integer"},
        {X, -3, {-2.5}, "integer"},
        {S, 12.5, {0, 0, " 12.5 "}},
        {S, kFails, {0, 0, "12,5"}},
        {X, kFails, {2}, "boolean"},
        {call("stringLength", S), 4},
        {call("stringLength", call("substring", S + constant("2") + constant("0"))), 0},
        {call("stringLength", call("concat", S + X)), 11, {1000000}},
    });
}

/// Counts are brought to the scale that a field asks for, whichever way they come to it.
TEST(TransformModel, CountsOfTime)
{
    const std::string given =
        "<DataField name='x' optype='continuous' dataType='dateDaysSince[1960]'/>"
        "<DataField name='flag' optype='categorical' dataType='boolean'/>";
    const std::string same =
        "<DefineFunction name='same'><ParameterField name='p'/>" + field("p") + "</DefineFunction>";
    const double days = 19056; // 2012-03-04
    const std::pair<std::string, double> cases[] = {
        {derived(X, "dateDaysSince[1960]"), days},
        {derived(X, "dateDaysSince[1970]"), days - 3653},
        {derived(X, "dateTimeSecondsSince[1970]"), (days - 3653) * 86400},
        {derived(X, "integer"), days},
        {derived(call("same", X), "dateDaysSince[1970]"), days - 3653},
        {derived(call("if", field("flag") + X + X), "dateDaysSince[1970]"), days - 3653},
        {derived("<FieldRef field='x' mapMissingTo='0'/>", "dateDaysSince[1970]"), days - 3653},
        {derived(constant("1", "dataType='dateDaysSince[1960]'"), "dateDaysSince[1970]"), -3652},
        {derived(call("+", X + constant("1")), "dateDaysSince[1970]"), days + 1},
    };
    for (const auto& [field, expected] : cases) {
        std::string fault;
        const auto computer = read(pmml(same + field, given), &fault);
        ASSERT_TRUE(computer) << field << fault;
        EXPECT_EQ(score(*computer, {days}).GetNumber(), expected) << field;
    }
}

/// What is not valid costs neither the other outputs nor a field that deals with it.
TEST(TransformModel, AnInvalidOutputLeavesTheOthers)
{
    const auto computer =
        read(pmml(derived(call("if", call("isValid", field("q")) + field("q") + constant("0"))) +
                  derived(call("/", X + Y), "double", "q")));
    ASSERT_TRUE(computer);
    ValueRecord input(2);
    input.AddValue("x", Value(1.0));
    input.AddValue("y", Value(0.0));
    ValueRecord output(2);
    computer->PrepareOutput(output);
    ASSERT_FALSE(computer->Compute(input, output, 0).IsError());
    EXPECT_EQ(output[0].GetNumber(), 0);
    EXPECT_TRUE(std::isnan(output[1].GetNumber()));
}

TEST(TransformModel, Texts)
{
    const std::pair<std::string, std::string> cases[] = {
        {call("uppercase", S), "GR\xc3\x9cN"},
        {call("lowercase", call("uppercase", S)), "gr\xc3\xbcn"},
        {call("substring", S + constant("3") + constant("1")), "\xc3\xbc"},
        {call("substring", S + constant("4") + constant("9")), "n"},
        {call("substring", S + constant("9") + constant("1")), ""},
        {call("trimBlanks", constant("  a b ", "dataType='string'")), "a b"},
        {call("concat", S + constant("-") + X + field("flag")), "Gr\xc3\xbcn-3true"},
        {call("concat", S + constant(" ") + S), "Gr\xc3\xbcn Gr\xc3\xbcn"},
        {constant("a<![CDATA[ & ]]>b"), "a & b"},
        {constant("1<!-- and -->2", "dataType='double'"), "12"},
        {"<MapValues outputColumn='o'><FieldColumnPair field='flag' column='i'/><InlineTable>"
         "<row><i>true</i><o> </o></row></InlineTable></MapValues>",
         " "},
        {call("if", field("flag") + constant("01") + constant("02")), "01"},
        {"<Discretize field='x'><DiscretizeBin binValue='01'><Interval closure='closedClosed' "
         "leftMargin='3' rightMargin='3'/></DiscretizeBin></Discretize>",
         "01"},
    };
    for (const auto& [expression, expected] : cases) {
        std::string fault;
        const auto computer = read(pmml(derived(expression, "string")), &fault);
        ASSERT_TRUE(computer) << expression << fault;
        EXPECT_EQ(computer->GetOutputAt(0)->GetValueType(), IMCVariable::kString);
        EXPECT_EQ(score(*computer, {}).GetText(), expected) << expression;
    }
}

/// Of fields in any order, functions with functions in them, values that are declared.
TEST(TransformModel, FieldsAndFunctions)
{
    const std::string fields =
        "<DataField name='x' optype='continuous' dataType='integer'>"
        "<Interval closure='closedClosed' leftMargin='0' rightMargin='10'/>"
        "<Value value='-9' property='missing'/><Value value='5' property='invalid'/></DataField>"
        "<DataField name='unused' optype='continuous' dataType='double'/>"
        "<DataField name='s' optype='categorical' dataType='string'>"
        "<Value value='a'/><Value value='b'/></DataField>";
    const std::string function =
        "<DefineFunction name='twice' optype='continuous' dataType='double'>"
        "<ParameterField name='p'/>" +
        call("+", field("p") + field("p")) +
        "</DefineFunction><DefineFunction name='eight' optype='continuous'>"
        "<ParameterField name='x' dataType='double'/>" +
        call("twice", call("twice", call("twice", X))) + "</DefineFunction>";
    const std::string model =
        pmml(function + derived(call("+", field("letter") + call("eight", X))) +
                 derived("<NormDiscrete field='upper' value='A'/>", "double", "letter") +
                 derived(call("uppercase", S), "string", "upper"),
             fields);
    std::string fault;
    const auto computer = read(model, &fault);
    ASSERT_TRUE(computer) << fault;
    EXPECT_EQ(computer->GetModelType(), 16);
    MCVarList inputs;
    computer->GetInputs(inputs);
    ASSERT_EQ(inputs.Size(), 2); // not the unused one
    EXPECT_EQ(nameOf(*inputs.GetVarAt(0)), "x");
    ASSERT_EQ(computer->GetOutputCount(), 2); // not the text on the way
    EXPECT_EQ(nameOf(*computer->GetOutputAt(0)), "r");
    const std::pair<Row, double> rows[] = {
        {{3, 0, "a"}, 25},      {{10, 0, "b"}, 80},    {{-9, 0, "a"}, kMissing},
        {{11, 0, "a"}, kFails}, {{5, 0, "a"}, kFails}, {{3, 0, "c"}, kFails},
        {{3, 0, "a"}, 25},
    };
    for (const auto& [row, expected] : rows)
        EXPECT_EQ(score(*computer, row).GetNumber(), expected) << row.x << row.s;
}

TEST(TransformModel, RefusesWhatItCannotDo)
{
    std::string deep;
    std::string ends;
    for (int i = 0; i < 100000; ++i) {
        deep += "<Apply function='abs'>";
        ends += "</Apply>";
    }
    deep += X + ends;
    // Each function calls the one before twice: a few lines that would grow to a billion calls.
    std::string growing =
        "<DefineFunction name='f0'><ParameterField name='p'/>" + field("p") + "</DefineFunction>";
    for (int i = 1; i < 30; ++i) {
        const std::string before = call("f" + std::to_string(i - 1), field("p"));
        growing += "<DefineFunction name='f" + std::to_string(i) + "'><ParameterField name='p'/>" +
                   call("+", before + before) + "</DefineFunction>";
    }
    const auto self = "<DefineFunction name='f'><ParameterField name='p'/>" +
                      call("f", field("p")) + "</DefineFunction>";
    const std::string counts = derived(field("day"), "dateDaysSince[1960]", "days") +
                               derived(field("moment"), "dateTimeSecondsSince[1970]", "seconds");
    const std::pair<std::string, std::string> cases[] = {
        {"", "not XML"},
        {"<PMML version='4.4'>", "not XML"},
        {"<Other version='4.4'/>", "not PMML"},
        {"<PMML version='3.2'/>", "PMML 3.2"},
        {"<PMML version='4.4'/>", "derives no field"},
        {"<!DOCTYPE PMML [<!ENTITY a 'b'>]>" + pmml(derived(X)), "document type"},
        {"<PMML version='4.4'><Strange/></PMML>", "<Strange>"},
        {pmml(derived(deep)), "too deeply"},
        {pmml(growing + derived(call("f29", X))), "too many"},
        {pmml(self + derived(call("f", X))), "calls itself"},
        {pmml(derived(field("q")) + derived(field("r"), "double", "q")), "made from itself"},
        {pmml(derived(field("r"))), "made from itself"},
        {pmml(derived(field("none"))), "no field \"none\""},
        {pmml(derived(X) + derived(Y)), "two fields are named \"r\""},
        {pmml(derived(X, "double", "y")), "two fields are named \"y\""},
        {pmml(derived(X, "number")), "no data type"},
        {pmml(derived(X + Y)), "exactly one expression"},
        {pmml(derived(field("day"), "boolean")), "cannot be"},
        {pmml(derived(field("moment"), "timeSeconds")), "converted to each other"},
        {pmml(derived(constant("14:30:30", "dataType='time'"), "dateDaysSince[1970]")),
         "converted to each other"},
        {pmml(counts + derived(field("days"), "timeSeconds")), "converted to each other"},
        {pmml(counts + derived(call("lessThan", field("days") + field("seconds")))),
         "different origins"},
        {pmml(counts + derived(call("if", field("flag") + field("days") + field("seconds")))),
         "different origins"},
        {pmml(derived("<TextIndex textField='s'><FieldRef field='s'/></TextIndex>")),
         "<TextIndex>"},
        {pmml(derived("<Aggregate field='x' function='sum'/>")), "<Aggregate>"},
        {pmml(derived(call("matches", S + constant("a")))), "matches: there is no such"},
        {pmml(derived(call("+", X))), "does not take 1"},
        {pmml(derived(call("+", X + S))), "does not fit"},
        {pmml(derived(call("+", X + constant("many")))), "\"many\" is not a value"},
        {pmml(derived(call("equal", X + S))), "do not go together"},
        {pmml(derived(call("not", X))), "does not fit"},
        {pmml(derived(call("/' invalidValueTreatment='asIs", X + Y))), "asIs"},
        {pmml(derived("<NormContinuous field='x'><LinearNorm orig='1' norm='0'/>"
                      "</NormContinuous>")),
         "two points"},
        {pmml(derived("<NormContinuous field='x'><LinearNorm orig='1' norm='0'/>"
                      "<LinearNorm orig='1' norm='1'/></NormContinuous>")),
         "ascend"},
        {pmml(derived("<NormContinuous field='s'><LinearNorm orig='0' norm='0'/>"
                      "<LinearNorm orig='1' norm='1'/></NormContinuous>")),
         "does not fit"},
        {pmml(derived("<MapValues outputColumn='o'><FieldColumnPair field='s' column='a'/>"
                      "<TableLocator/></MapValues>")),
         "InlineTable"},
        {pmml(derived("<Discretize field='x'><DiscretizeBin binValue='1'>"
                      "<Interval closure='half'/></DiscretizeBin></Discretize>")),
         "closure \"half\""},
    };
    for (const auto& [model, expected] : cases) {
        std::string fault;
        EXPECT_FALSE(read(model, &fault)) << expected;
        EXPECT_THAT(fault, testing::HasSubstr(expected));
    }
}

/// A long chain of fields is no nesting: each is evaluated when it has its sources.
TEST(TransformModel, LongChainsAndOtherKinds)
{
    std::string chain;
    for (int i = 0; i < 5000; ++i)
        chain +=
            derived(call("+", field(i == 4999 ? "x" : "c" + std::to_string(i + 1)) + constant("1")),
                    "double", "c" + std::to_string(i));
    const auto computer = read(pmml(chain));
    ASSERT_TRUE(computer);
    EXPECT_EQ(score(*computer, {1}).GetNumber(), 5001);

    const auto regression = read("<PMML version='4.2'><RegressionModel/></PMML>");
    ASSERT_TRUE(regression);
    EXPECT_NE(regression->GetModelType(), 16);
    ValueRecord record(-1);
    EXPECT_TRUE(regression->Compute(record, record, 0).IsError());
}

} // namespace
