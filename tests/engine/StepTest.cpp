#include "engine/ClusterMachine.h"
#include "engine/EngineFixture.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <tuple>

using namespace EngineTest;
using testing::HasSubstr;

namespace {

using StepTest = EngineFixture;

constexpr const char* kPeople = "name,age,city,pay\n"
                                "Ann,31,Oslo,10.5\n"
                                "Bob,25,Rome,20\n"
                                "Cid,,Oslo,30.25\n"
                                "Dee,25,,\n";

/// The result is the whole file, or a part of the fault.
constexpr std::tuple<const char*, const char*, const char*> kCases[] = {
    {"fields in the order of their names", R"(filterFields({"fields": ["city", "name"]}))",
     "city,name\nOslo,Ann\nRome,Bob\nOslo,Cid\n,Dee\n"},
    {"a list is a text, missing if a number of it is",
     R"(deriveField(_, c => x => ("l", [x.age, x.pay])) -> filterFields({"fields": ["l"]}))",
     "l\n\"[31.0, 10.5]\"\n\"[25.0, 20.0]\"\n\n\n"},
    {"a missing answer keeps no record", "filterRecords(_, c => x => x.age < 30)",
     "name,age,city,pay\nBob,25,Rome,20.0\nDee,25,,\n"},
    {"a new field is the last",
     R"(deriveField(_, c => x => ("double age", x.age * 2)) -> )"
     R"(filterFields({"fields": ["name", "double age"]}))",
     "name,double age\nAnn,62\nBob,50\nCid,\nDee,50\n"},
    {"a truth value is stored as 1 and 0",
     R"(deriveField(_, c => x => ("young", x.age < 30)) -> filterFields({"fields": ["young"]}))",
     "young\n0\n1\n\n1\n"},
    {"a changed field keeps its place",
     R"(reclassifyField(_, c => x => ("age", if (x.age < 30) "young" else "old")) -> )"
     R"(filterFields({"fields": ["name", "age"]}))",
     "name,age\nAnn,old\nBob,young\nCid,old\nDee,young\n"},
    {"groups in the order of their keys, missing last",
     R"(aggregate({"output": [{"function": "key", "input": "city"}, {"function": "count"},
        {"function": "sum", "input": "pay"}, {"function": "mean", "input": "age"}]}))",
     "city,count,sum_pay,mean_age\nOslo,2,40.75,31.0\nRome,1,20.0,25.0\n,1,,25.0\n"},
    {"one record without a key",
     R"(aggregate({"output": [{"function": "count", "input": "age", "outName": "n"},
        {"function": "sum", "input": "age"}, {"function": "min", "input": "name"},
        {"function": "max", "input": "pay"}, {"function": "median", "input": "age"},
        {"function": "percentile", "input": "pay", "centile": 75, "outName": "p75"}]}))",
     "n,sum_age,min_name,max_pay,median_age,p75\n3,81,Ann,30.25,25.0,25.125\n"},
    {"first and last by record, missing or not",
     R"(aggregate({"output": [{"function": "first", "input": "pay"},
        {"function": "last", "input": "pay"}, {"function": "last", "input": "name"}]}))",
     "first_pay,last_pay,last_name\n10.5,,Dee\n"},
    {"sample deviation",
     R"(aggregate({"output": [{"function": "sd", "input": "age"},
        {"function": "variance", "input": "age"}]}))",
     "sd_age,variance_age\n3.4641016151377544,12.0\n"},
    {"what is infinite is missing, and a mean beyond its type too",
     R"(deriveField(_, c => x => ("big", 1.7e308)) -> aggregate({"output": [{"function": "key",
        "input": "city"}, {"function": "sum", "input": "big"}, {"function": "mean", "input": "big"}]})
        -> aggregate({"output": [{"function": "count", "input": "sum_big"}, {"function": "count",
        "input": "mean_big"}, {"function": "sd", "input": "sum_big"}, {"function": "max", "input":
        "sum_big"}]}))",
     "count_sum_big,count_mean_big,sd_sum_big,max_sum_big\n2,2,0.0,1.7e+308\n"},
    {"a mean is not rounded out of its values",
     R"(deriveField(_, c => x => ("tenth", 0.1)) -> filterRecords(_, c => x => x.age > 0) ->
        aggregate({"output": [{"function": "mean", "input": "tenth"}]}))",
     "mean_tenth\n0.1\n"},
    {"nothing is left, and one record tells so",
     R"(filterRecords(_, c => x => x.age > 99) ->
        aggregate({"output": [{"function": "count"}, {"function": "sum", "input": "age"}]}))",
     "count,sum_age\n0,\n"},
    {"whole factors copy, missing and negative ones drop",
     R"(balanceRecords(_, c => x => if (x.name == "Ann") 2 else if (x.name == "Bob") -1 else x.age)
        -> filterFields({"fields": ["name"]}) -> filterRecords(_, c => x => x.name != "Dee"))",
     "name\nAnn\nAnn\n"},
    {"sorted down, equal ones in their order and missing ones last",
     R"(sortRecords({"fields": [{"name": "age", "descending": true}]}) ->
        filterFields({"fields": ["name"]}))",
     "name\nAnn\nBob\nDee\nCid\n"},
    {"sorted by two fields, then the first ones",
     R"(sortRecords({"fields": [{"name": "city"}, {"name": "pay", "descending": true}]}) ->
        limitRecords({"count": 3}) -> filterFields({"fields": ["name"]}))",
     "name\nCid\nAnn\nBob\n"},
    {"the first record of each value",
     R"(distinctRecords({"fields": ["age"]}) -> filterFields({"fields": ["name"]}))",
     "name\nAnn\nBob\nCid\n"},
    {"each record once",
     R"(filterFields({"fields": ["age"]}) -> distinctRecords(_) -> sampleRecords({"percent": 100}))",
     "age\n31\n25\n\n"},
    {"a name that is no identifier",
     R"(deriveField(_, c => x => ("it's \"q\"", 1)) -> )"
     R"(filterRecords(_, c => x => x.`it's "q"` == 1) -> )"
     R"(filterFields({"fields": ["it's \"q\""]}))",
     "\"it's \"\"q\"\"\"\n1\n1\n1\n1\n"},

    {"no such step", "filterField({})", "HVEPL0001E line 1, column"},
    {"the nearest step", "filterField({})", R"(did you mean "filterFields"?)"},
    {"a setting is missing", "aggregate({})",
     R"(HVEPL0003E aggregate: the setting "output" is missing)"},
    {"a setting of a wrong type", R"(filterFields({"fields": "age"}))",
     R"(HVEPL0004E filterFields: the setting "fields" must be a list, not a text)"},
    {"an element of a wrong type", R"(filterFields({"fields": [1]}))",
     R"(filterFields: the setting "fields[0]" must be a text, not a number)"},
    {"no fields", R"(filterFields({"fields": []}))", "HVEPL0004E filterFields"},
    {"a field that is not there", R"(filterFields({"fields": ["agee"]}))",
     R"(HVEPL0005E filterFields: the input has no field "agee"; did you mean "age"?)"},
    {"a field named twice", R"(filterFields({"fields": ["age", "age"]}))",
     R"(HVEPL0006E filterFields: there is a field "age" already)"},
    {"a new field of a known name", R"(deriveField(_, c => x => ("Age", 1)))",
     R"(HVEPL0006E deriveField: there is a field "age" already)"},
    {"a changed field that is not there", R"(reclassifyField(_, c => x => ("pai", 1)))",
     R"(HVEPL0005E reclassifyField: the input has no field "pai"; did you mean "pay"?)"},
    {"an invalid condition", "filterRecords(_, c => x => x.age)",
     "HVEEX0005E filterRecords: the condition"},
    {"an invalid factor", "balanceRecords(_, c => x => x.name)",
     "HVEEX0005E balanceRecords: the factor"},
    {"no such function", R"(aggregate({"output": [{"function": "meen", "input": "age"}]}))",
     R"("output[0].function" is "meen", which is not an aggregate function; did you mean "mean"?)"},
    {"a mean of texts", R"(aggregate({"output": [{"function": "mean", "input": "name"}]}))",
     R"("output[0].input" names "name", which is String: mean needs a number)"},
    {"nothing to sort by", R"(sortRecords({"fields": []}))", "there is nothing to sort by"},
    {"a negative limit", R"(limitRecords({"count": -1}))", "is -1, not 0 or more"},
    {"a sample of no size", "sampleRecords({})", R"(the setting "count" or "percent" is missing)"},
    {"a sample of more than all", R"(sampleRecords({"percent": 101}))", "must be from 0 to 100"},
    {"a sum of nothing", R"(aggregate({"output": [{"function": "sum"}]}))",
     R"(HVEPL0003E aggregate: the setting "output[0].input" is missing)"},
    {"a centile out of range",
     R"(aggregate({"output": [{"function": "percentile", "input": "age", "centile": 101}]}))",
     R"("output[0].centile" is 101, not 1 to 100)"},
    {"two outputs of one name",
     R"(aggregate({"output": [{"function": "count"}, {"function": "count"}]}))",
     R"(HVEPL0006E aggregate: there is a field "count" already)"},
    {"nothing to aggregate", R"(aggregate({"output": []}))", "HVEPL0004E aggregate"},
    {"a lambda where a configuration is wanted", "filterFields(_, c => x => 1)",
     "the step is written filterFields(configuration)"},
    {"a configuration where a lambda is wanted", "filterRecords({})",
     "the step is written filterRecords(_, lambda)"},
    {"a sum beyond its type",
     R"(deriveField(_, c => x => ("big", 9223372036854775807)) ->
        aggregate({"output": [{"function": "sum", "input": "big"}]}))",
     "HVERT0003E read -> deriveField -> aggregate -> write: the number 36893488147419103228 is "
     "beyond the range of an Integer"},
    {"a value that does not convert while the job runs",
     R"(deriveField(_, c => x => ("t", toTimestamp(x.name, "yyyy-MM-dd", "yyyy-MM-dd", "HH:mm",
        "en", date(1970, 1, 1)))))",
     R"(HVEEX0012E step deriveField, line 1, column )"},
    {"a centile with a fraction",
     R"(aggregate({"output": [{"function": "percentile", "input": "age", "centile": 2.5}]}))",
     "must be a whole number, not a real number"},
    {"a name that the database cannot take", R"(deriveField(_, c => x => ("a\u0000b", 1)))",
     "HVEPL0004E deriveField: the name of a field holds the character NUL"},
    {"an unknown component", "tcm:scores(_)", R"(HVEPL0013E the component "tcm:scores")"},
};

TEST_F(StepTest, EachStepGivesItsRecordsOrNamesItsFault)
{
    for (const auto& [what, steps, result] : kCases) {
        SCOPED_TRACE(what);
        const std::string got = through(kPeople, steps);
        const bool fault = std::string(result).find('\n') == std::string::npos;
        if (fault)
            EXPECT_THAT(got, AllOf(HasSubstr(result), Not(testing::EndsWith("!"))));
        else
            EXPECT_EQ(got, result);
        // Whatever happened, nothing half-written is left.
        std::vector<std::string> expected = {"in.csv"};
        if (!fault)
            expected.emplace_back("out.csv");
        EXPECT_EQ(files(), expected);
    }
}

TEST_F(StepTest, AnIntegerBeyondItsRangeFailsTheJob)
{
    EXPECT_THAT(
        through(kPeople, R"(deriveField(_, c => x => ("big", x.age * 9223372036854775807)))"),
        testing::StartsWith(std::string("HVERT0003E read -> deriveField -> write: ") +
                            (clusterUrl().empty() ? "Overflow in multiplication of Integer (31 * "
                                                  : "a number is beyond the range of an Integer")));
    EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
}

/// The other results are not affected.
TEST_F(StepTest, AResultBeyondItsTypeIsMissingAndReported)
{
    write("in.csv", kPeople);
    const auto spread = [this](const std::string& values, const std::string& after) {
        return run(readCsv("in.csv") + R"( -> deriveField(_, c => x => ("v", )" + values +
                   R"()) -> aggregate({"output": [{"function": "sd", "input": "v"},
                       {"function": "variance", "input": "v"}, {"function": "mean", "input": "v"},
                       {"function": "count", "input": "v"}]}))" +
                   after + " -> " + writeCsv("out.csv"));
    };
    constexpr std::tuple<const char*, const char*, std::size_t> kSpreads[] = {
        {"if (x.age > 30) 1e200 else -1e200", "1e+200,,-5e+199,4", 1},
        {"if (x.name == \"Ann\" || x.name == \"Cid\") 1.7e308 else -1.7e308", ",,0.0,4", 2},
        {"1.7e308", "0.0,0.0,,4", 1},
        {"if (x.age > 30) 1e-200 else -1e-200", "1e-200,0.0,-5e-201,4", 0},
        {"if (x.name == \"Ann\") 1.5 else null", ",,1.5,1", 0},
        {"1e15 + (if (x.age > 30) 1 else if (x.age > 0) 4 else null)",
         "1.7320508075688772,3.0,1000000000000003.0,3", 0},
    };
    for (const auto& [values, result, messages] : kSpreads) {
        SCOPED_TRACE(values);
        const auto listener = spread(values, "");
        ASSERT_EQ(listener.ending, "success") << listener.errorText;
        EXPECT_EQ(listener.messages.size(), messages);
        EXPECT_EQ(read("out.csv"), "sd_v,variance_v,mean_v,count_v\n" + std::string(result) + "\n");
    }
    const auto listener = spread("if (x.age > 30) 1e200 else -1e200",
                                 " -> filterRecords(_, c => x => isMissing(x.variance_v))");
    ASSERT_EQ(listener.messages.size(), 1U);
    EXPECT_EQ(listener.messages[0].first, "HVERT0006W");
    EXPECT_EQ(listener.messages[0].second,
              "aggregate: 1 value of \"variance_v\" exceeds the range of a Real and is missing");
}

TEST_F(StepTest, FractionsOfFactorsAreDrawnTheSameWayEachTime)
{
    const std::string csv = numbers(2000);
    const std::string once = through(csv, "balanceRecords(_, c => x => 1.25)");
    const auto records = std::count(once.begin(), once.end(), '\n') - 1;
    EXPECT_GT(records, 2400);
    EXPECT_LT(records, 2600);
    EXPECT_EQ(through(csv, "balanceRecords(_, c => x => 1.25)"), once);
    EXPECT_THAT(through(csv, "balanceRecords(_, c => x => 2000000)"),
                testing::StartsWith("HVERT0003E balanceRecords: a factor is above 1000000"));
}

TEST_F(StepTest, SamplesAreDrawnBySeedAndStayInOrder)
{
    const std::string csv = numbers(2000);
    const auto sample = [&](const std::string& settings) {
        return through(csv, "sampleRecords({" + settings + "})");
    };
    const auto count = [](const std::string& text) {
        return std::count(text.begin(), text.end(), '\n') - 1;
    };
    for (const std::string size : {R"("count": 500)", R"("percent": 25)"}) {
        const std::string once = sample(size);
        EXPECT_NEAR(static_cast<double>(count(once)), 500, size[1] == 'c' ? 0 : 75);
        EXPECT_EQ(sample(size), once);
        EXPECT_EQ(through(once, R"(sortRecords({"fields": [{"name": "n"}]}))"), once);
        // Independent draws have about 125 records in common.
        std::string both = once + sample(size + R"(, "seed": 1)").substr(2);
        EXPECT_NEAR(static_cast<double>(count(through(both, "distinctRecords(_)"))), 875, 60);
    }
}

// The result has its lines in any order, except with keepOrder, or is a part of the fault.
constexpr std::tuple<const char*, const char*, const char*> kJoins[] = {
    {"inner", R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Inner",
                 "outputFields": {"l": ["person"], "r": ["size"]}})",
     "person,size\nAnn,7\nCid,7\n"},
    {"outer keeps all", R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Outer"})",
     "person,city,name,size,City_1\nAnn,Oslo,Oslo,7,x\nBob,Rome,,,\nCid,Oslo,Oslo,7,x\nDee,,,,\n"
     ",,Bern,1,\n"},
    {"outer keeps one side", R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Outer",
                               "outputFields": {"r": ["name"], "l": ["person"]},
                               "nonMatchingSources": ["r"]})",
     "person,name\n,Bern\nAnn,Oslo\nCid,Oslo\n"},
    {"anti", R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Anti",
                "outputFields": {"l": ["person"]}})",
     "person\nBob\nDee\n"},
    {"the order of the inputs, records without a match last",
     R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Outer", "keepOrder": true,
         "outputFields": {"r": ["name"], "l": ["person"]}})",
     "person,name\nAnn,Oslo\nBob,\nCid,Oslo\nDee,\n,Bern\n"},
    {"a field twice", R"({"matchFields": [{"l": "city", "r": "name"}],
                        "outputFields": {"l": ["city", "city"]}})",
     R"(there is a field "city" already)"},
    {"anti of both", R"({"matchFields": [{"l": "city", "r": "name"}], "joinType": "Anti",
                        "nonMatchingSources": ["l", "r"]})",
     "must name one input"},
    {"cartesian", R"({"matchFields": [], "joinType": "Cartesian",
                     "outputFields": {"l": ["person"], "r": ["name"]}})",
     "person,name\nAnn,Bern\nAnn,Oslo\nBob,Bern\nBob,Oslo\nCid,Bern\nCid,Oslo\nDee,Bern\nDee,"
     "Oslo\n"},
    {"no match at all", R"({"matchFields": [], "joinType": "Inner"})",
     R"(does not match the input "r")"},
    {"types that do not meet", R"({"matchFields": [{"l": "city", "r": "size"}]})",
     R"(matches "city", which is String, with "size", which is Integer)"},
    {"a field that is not there", R"({"matchFields": [{"l": "town", "r": "name"}]})",
     R"(join: the input "l" has no field "town")"},
    {"an unknown type", R"({"matchFields": [], "joinType": "Sideways"})", R"("Sideways")"},
};

std::multiset<std::string> sorted(const std::string& text)
{
    std::istringstream lines(text);
    std::multiset<std::string> all;
    for (std::string line; std::getline(lines, line);)
        all.insert(line);
    return all;
}

TEST_F(StepTest, JoinsMatchByTag)
{
    write("l.csv", "person,city\nAnn,Oslo\nBob,Rome\nCid,Oslo\nDee,\n");
    write("r.csv", "name,size,City\nOslo,7,x\nBern,1,\n");
    for (const auto& [what, configuration, result] : kJoins) {
        SCOPED_TRACE(what);
        const auto listener =
            run("val l = " + readCsv("l.csv") + "\nval r = " + readCsv("r.csv") + "\njoin(" +
                configuration + ", l: l, r: r) -> " + writeCsv("out.csv"));
        const std::string expected = result;
        if (expected.find('\n') == std::string::npos) {
            EXPECT_THAT(listener.errorText, HasSubstr(expected));
            continue;
        }
        ASSERT_EQ(listener.ending, "success") << listener.errorText;
        EXPECT_EQ(sorted(read("out.csv")), sorted(expected));
        if (std::string(configuration).find("keepOrder") != std::string::npos) {
            EXPECT_EQ(read("out.csv"), expected);
        }
    }
    const auto listener =
        run("val l = " + readCsv("l.csv") + "\nval r = " + readCsv("r.csv") +
            "\n"
            R"(join({"matchFields": [{"l": "city", "r": "name"}], )"
            R"("outputFields": {"l": ["person"], "R": ["size"]}}, l: l, r: r) -> )" +
            writeCsv("out.csv"));
    ASSERT_EQ(listener.messages.size(), 1U) << listener.errorText;
    EXPECT_THAT(listener.messages[0].second,
                HasSubstr(R"(join: the setting "outputFields.R" is not known)"));
    EXPECT_EQ(sorted(read("out.csv")), sorted("person\nAnn\nCid\n"));
}

TEST_F(StepTest, UnionsMatchByNameOrByPosition)
{
    write("a.csv", "id,v\n1,2\n");
    write("b.csv", "V,w\n2.5,x\n");
    write("c.csv", "k,u\n7,8\n");
    const auto unite = [&](const std::string& configuration, const std::string& second) {
        const auto listener =
            run("val a = " + readCsv("a.csv") + " val b = " + readCsv(second) + " union(" +
                configuration + ", a: a, b: b) -> " + writeCsv("out.csv"));
        return listener.ending == "success" ? read("out.csv") : listener.errorText;
    };
    EXPECT_EQ(unite("{}", "b.csv"), "id,v,w\n1,2.0,\n,2.5,x\n");
    EXPECT_EQ(unite(R"({"matchCase": true})", "b.csv"), "id,v,V_1,w\n1,2,,\n,,2.5,x\n");
    EXPECT_EQ(unite(R"({"matchByPosition": true})", "c.csv"), "id,v\n1,2\n7,8\n");
    EXPECT_THAT(unite(R"({"matchByPosition": true})", "b.csv"), HasSubstr(R"("v" is Integer)"));
    // An input may be a bare name, which is then its tag.
    succeeded(
        run("val a = " + readCsv("a.csv") + " val c = " + readCsv("c.csv") +
            R"( join({"matchFields": [{"a": "v", "c": "k"}], "joinType": "Anti"}, a, c) -> )" +
            writeCsv("out.csv")));
    EXPECT_EQ(read("out.csv"), "id,v\n1,2\n");
}

} // namespace
