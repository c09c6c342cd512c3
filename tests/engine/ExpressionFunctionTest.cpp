#include <gmock/gmock.h>

#include <cctype>
#include <set>
#include <span>
#include <vector>

#include "DatabaseEvaluator.h"
#include "datafile/RaisedFault.h"
#include "datafile/SqlQuoting.h"
#include "expression/DateTimePattern.h"
#include "functions/FunctionTable.h"

namespace EmbeddedHV {
namespace {

using ExpressionFunction = DatabaseEvaluator;

/// A body, and its value and type.
using FunctionCase = std::pair<const char*, const char*>;

constexpr FunctionCase kConversions[] = {
    {"toReal(x.i)", "7.0:Real"},
    {"toReal(\" 1.5e1 \")", "15.0:Real"},
    {"toInteger(x.j)", "-2:Integer"},
    {"toInteger(-2.9)", "-2:Integer"},
    {"toInteger(\" +12 \")", "12:Integer"},
    {"toString(x.i)", "7:String"},
    {"toString(0.1 + 0.2)", "0.30000000000000004:String"},
    {"toString(2.0)", "2.0:String"},
    {"toString(1e20)", "1e+20:String"},
    {"toString(x.d)", "2024-02-29:String"},
    {"toString(x.t)", "03:04:05.5:String"},
    {"toString(x.ts)", "2024-02-29 23:59:58.25:String"},
    {"toDate(\"2024-02-29\")", "2024-02-29:Date"},
    {"toDate(\"29.02.24\", \"dd.MM.yy\")", "2024-02-29:Date"},
    {"toDate(\"1 February 1999\", \"d MMMM yyyy\")", "1999-02-01:Date"},
    {"toDate(\"2024-366\", \"yyyy-D\")", "2024-12-31:Date"},
    {"toDate(\"366 %j 1\", \"yyy '%j' D\")", "0366-01-01:Date"},
    {"toDate(x.ts)", "2024-02-29:Date"},
    {"toTime(\"23:59\")", "23:59:00:Time"},
    {"toTime(\"23:59:59.123456\")", "23:59:59.123456:Time"},
    {"toTime(\"03.15 PM\", \"hh.mm a\")", "15:15:00:Time"},
    {"toTime(x.ts)", "23:59:58.25:Time"},
    {"toTimestamp(\"2024-02-29T01:02\")", "2024-02-29 01:02:00:Timestamp"},
    {"toTimestamp(\"2024-02-29 01:02:03.5\")", "2024-02-29 01:02:03.5:Timestamp"},
    {"toTimestamp(\"2024-02-29\")", "2024-02-29 00:00:00:Timestamp"},
    {"toTimestamp(\"20240229-0102\", \"yyyyMMdd-HHmm\")", "2024-02-29 01:02:00:Timestamp"},
    {"toTimestamp(x.d)", "2024-02-29 00:00:00:Timestamp"},
};

constexpr FunctionCase kDates[] = {
    {"[year(x.d), quarter(x.ts), month(x.d), day(x.ts)]", "[2024.0, 1.0, 2.0, 29.0]:List"},
    {"[hour(x.t), minute(x.t), second(x.t)]", "[3.0, 4.0, 5.0]:List"},
    {"[hour(x.ts), minute(x.ts), second(x.ts), hour(x.d)]", "[23.0, 59.0, 58.0, 0.0]:List"},
    {"date(2024, 2, 29)", "2024-02-29:Date"},
    {"time(23, 59, 59.5)", "23:59:59.5:Time"},
    {"timestamp(2024, 2, 29, 1, 2, 3.25)", "2024-02-29 01:02:03.25:Timestamp"},
    {"week(date(2021, 1, 3))", "53:Integer"},
    {"dayOfYear(date(2024, 12, 31))", "366:Integer"},
    {"dayOfWeek(date(2024, 3, 3))", "7:Integer"},
    {"dayOfWeek(date(2024, 3, 4))", "1:Integer"},
    {"addDays(x.d, 1)", "2024-03-01:Date"},
    {"addDays(x.ts, -60)", "2023-12-31 23:59:58.25:Timestamp"},
    {"addMonths(date(2023, 10, 31), 4)", "2024-02-29:Date"},
    {"addMonths(x.ts, 12)", "2025-02-28 23:59:58.25:Timestamp"},
    {"addSeconds(x.ts, 1.75)", "2024-03-01 00:00:00:Timestamp"},
    {"addSeconds(x.d, -1)", "2024-02-28 23:59:59:Timestamp"},
    {"daysBetween(x.d, date(2024, 1, 1))", "-59:Integer"},
    {"daysBetween(x.ts, toTimestamp(\"2024-03-01\"))", "1:Integer"},
    {"daysBetween(x.d, addSeconds(x.ts, 2))", "1:Integer"},
    {"secondsBetween(x.d, x.ts)", "86398.25:Real"},
    {"secondsBetween(x.t, time(0, 0, 0))", "-11045.5:Real"},
};

constexpr FunctionCase kTexts[] = {
    {"length(\"größe\")", "5:Integer"},
    {"lower(\"ÄB\")", "äb:String"},
    {"upper(\"äb\")", "ÄB:String"},
    {"\"[\" + trim(\"  a b \") + \"]\"", "[a b]:String"},
    {"\"[\" + ltrim(\" a \") + \"]\"", "[a ]:String"},
    {"\"[\" + rtrim(\" a \") + \"]\"", "[ a]:String"},
    {"substring(\"größe\", 3)", "öße:String"},
    {"substring(\"größe\", 0, 2)", "gr:String"},
    {"substring(\"größe\", -3, 2)", "gr:String"},
    {"substring(\"größe\", 4, 99999999999)", "ße:String"},
    {"substring(\"größe\", 99999999999, 1)", ":String"},
    {"substring(\"größe\", 2, -1)", ":String"},
    {"indexOf(\"größe\", \"ß\")", "4:Integer"},
    {"indexOf(\"größe\", \"x\")", "0:Integer"},
    {"replace(\"a.b.c\", \".\", \"\")", "abc:String"},
    {"replace(\"abc\", \"\", \"x\")", "abc:String"},
    {"concat(\"a\", x.ms, \"b\")", "ab:String"},
    {"split(\"a;b;c\", \";\", 2)", "b:String"},
    {"split(\"a;b;c\", \";\", 4)", ":String"},
    {"padLeft(\"7\", 3, \"0\")", "007:String"},
    {"padLeft(\"1234\", 3, \"0\")", "1234:String"},
    {"padRight(\"é\", 3, \"xy\")", "éxy:String"},
};

constexpr FunctionCase kNumbers[] = {
    {"[abs(x.j), abs(-x.r), sign(x.j), sign(0.0)]", "[2.0, 2.5, -1.0, 0.0]:List"},
    {"[floor(-2.5), ceiling(-2.5), truncate(-2.5)]", "[-3.0, -2.0, -2.0]:List"},
    {"[round(2.5), round(-2.5), round(x.i)]", "[3.0, -3.0, 7.0]:List"},
    {"[sqrt(16), exp(0), ln(exp(1)), log10(1000)]", "[4.0, 1.0, 1.0, 3.0]:List"},
    {"[sin(0), cos(0), tan(0), asin(0), acos(1), atan(0)]", "[0.0, 1.0, 0.0, 0.0, 0.0, 0.0]:List"},
    {"round(2.347, 2)", "2.35:Real"},
    {"round(1234, -2)", "1200.0:Real"},
    {"round(2.5, 99999999999)", "2.5:Real"},
    {"min(x.i, x.r, x.mr)", "2.5:Real"},
    {"max(3)", "3:Integer"},
    {"max(x.s, \"B\")", "B:String"},
    {"max(x.d, x.ts)", "2024-02-29 23:59:58.25:Timestamp"},
    {"ifMissing(x.mi, 2.5)", "2.5:Real"},
    {"ifMissing(x.ms, \"none\")", "none:String"},
    {"nullIf(x.i, 8.5)", "7.0:Real"},
};

/// Values and types, and the bodies that have them.
const std::pair<const char*, std::vector<const char*>> kSharedBodies[] = {
    {"missing:Real",
     {"toReal(\"abc\")", "toReal(\"\")", "toReal(\"nan\")", "toReal(\"-infinity\")",
      "toReal(\"1e999\")", "toReal(\"1_000\")", "toReal(\"+-1\")", "sqrt(-1)", "ln(0)", "ln(-x.r)",
      "log10(0)", "power(-1, 0.5)", "sin(1e308 * 10)", "asin(2)", "acos(-1.1)"}},
    {"missing:Integer",
     {"toInteger(1e300)", "toInteger(\"12.7\")", "toInteger(\"9223372036854775808\")",
      "min(x.mi, null)", "nullIf(x.i, 7)"}},
    {"missing:Date",
     {"toDate(\"2023-02-29\")", "toDate(\"infinity\")", "toDate(\"epoch\")", "toDate(\" \")",
      "toDate(\"366\", \"D\")", "toDate(\"2023-366\", \"yyyy-D\")", "date(2023, 2, 29)",
      "date(2024, 13, 1)", "date(2024, 1, -1)", "date(0, 1, 1)", "addDays(x.d, 99999999999)"}},
    {"missing:Time",
     {"toTime(\"24:00:00\")", "time(24, 0, 0)", "time(1, 2, 60)", "time(23, 59, 59.9999999)"}},
    {"missing:Timestamp",
     {"toTimestamp(\"x\")", "timestamp(2024, 2, 30, 1, 2, 3)", "timestamp(2024, 2, 29, 25, 2, 3)",
      "addMonths(x.ts, -2147483647)", "addSeconds(x.ts, 1e300)"}},
    {"true:Boolean",
     {"startsWith(x.s, \"Ab\")", "startsWith(x.s, \"\")", "contains(x.s, \"b c\")",
      "contains(\"50%\", \"%\")", "power(2, 0.5) ** 2 > 1.99", "atan2(0, -1) == pi()",
      "isMissing(x.mi)", "isMissing(null)"}},
    {"false:Boolean", {"endsWith(x.s, \" C\")", "isMissing(x.l)"}},
    {"missing:String",
     {"split(\"a;b;c\", \";\", 0)", "padLeft(\"7\", 3, \"\")",
      "padLeft(\"7\", 99999999999, \"0\")"}},
};

TEST_F(ExpressionFunction, GivesWhatTheTableOfThePageSays)
{
    for (const auto cases :
         {std::span<const FunctionCase>(kConversions), {kDates}, {kTexts}, {kNumbers}})
        for (const auto& [body, value] : cases)
            EXPECT_EQ(valueOf(body), value) << body;
    for (const auto& [value, bodies] : kSharedBodies)
        for (const char* body : bodies)
            EXPECT_EQ(valueOf(body), value) << body;
}

/// The database computes the value of a moving window from parts.
TEST_F(ExpressionFunction, AggregatesOfPartsAreThoseOfTheWhole)
{
    // The values of 64 records, and their standard deviation.
    const std::pair<const char*, const char*> rows[] = {
        {"i", "sqrt(64 * 65 / 12)"},
        {"1e200 * i", "1e200 * sqrt(64 * 65 / 12)"},
        {"if(i < 32, 1e-200, 1e200)", "0.5e200 * sqrt(64 / 63)"},
        {"if(i < 32, -1e200, 1e-200)", "0.5e200 * sqrt(64 / 63)"},
    };
    for (const auto& [values, deviation] : rows)
        EXPECT_EQ(query("SELECT abs(sd / (" + std::string(deviation) +
                        ") - 1) < 1e-12 FROM (SELECT i, hv_real_sd(" + values +
                        ") OVER (ORDER BY i ROWS BETWEEN 63 PRECEDING AND CURRENT ROW) AS sd "
                        "FROM range(64) AS t(i)) ORDER BY i DESC"),
                  "true")
            << values;
}

/// Every form compiles to SQL that the database takes, with arguments missing as well.
TEST_F(ExpressionFunction, EveryFormRunsOnMissingArguments)
{
    const std::pair<std::string, std::string> sources[] = {
        {"Integer", "x.mi"},     {"Real", "x.mr"},          {"Number", "x.mr"},
        {"String", "x.ms"},      {"Date", "x.md"},          {"Time", "toTime(x.ms)"},
        {"Pattern", "\"yyyy\""}, {"Boolean", "(x.mi > 1)"}, {"Timestamp", "toTimestamp(x.ms)"},
        {"Any", "x.mi"},         {"Same", "x.mr"}};
    // These answer for a missing argument, as the page says.
    const std::set<std::string_view> answering = {"isMissing", "concat", "pi"};
    for (const Function& function : kFunctions) {
        std::string arguments(function.parameters.substr(0, function.parameters.find("...")));
        for (const auto& [word, source] : sources)
            for (std::size_t at = 0; (at = arguments.find(word, at)) != std::string::npos;)
                if (std::isalpha(arguments[at + word.size()]) != 0)
                    at += word.size(); // Time in Timestamp
                else
                    arguments.replace(at, word.size(), source), at += source.size();
        const std::string call = std::string(function.name) + "(" + arguments + ")";
        if (answering.contains(function.name))
            EXPECT_THAT(valueOf(call), testing::Not(testing::HasSubstr("rror"))) << call;
        else
            EXPECT_THAT(valueOf(call), testing::StartsWith("missing:")) << call;
    }
}

TEST_F(ExpressionFunction, TimeStringsConvertByThreePatternsOrFailTheJob)
{
    const auto convert = [this](const std::string& value) {
        return valueOf("toTimestamp(" + value +
                       ", \"yyyy-MM-dd HH:mm:ss\", \"yyyy-MM-dd\", \"HH:mm:ss\", \"S\", "
                       "date(1970,1,1))");
    };
    EXPECT_EQ(convert("\"2024-02-29 01:02:03\""), "2024-02-29 01:02:03:Timestamp");
    EXPECT_EQ(convert("\"2024-02-29\""), "2024-02-29 00:00:00:Timestamp");
    EXPECT_EQ(convert("\"01:02:03\""), "1970-01-01 01:02:03:Timestamp");
    EXPECT_EQ(convert("\"  \""), "missing:Timestamp");
    EXPECT_EQ(convert("x.ms"), "missing:Timestamp");
    EXPECT_EQ(convert("x.t"), "1970-01-01 03:04:05.5:Timestamp");
    EXPECT_EQ(convert("x.d"), "2024-02-29 00:00:00:Timestamp");
    EXPECT_EQ(convert("x.ts"), "2024-02-29 23:59:58.25:Timestamp");

    const auto fault = raisedFault(convert("x.s"));
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->id(), errors::kConversion);
    EXPECT_EQ(fault->text(), "step filterRecords, line 1, column 13: toTimestamp cannot convert "
                             "\"Ab c\"");
    // Data that looks like an id is not one.
    EXPECT_FALSE(raisedFault("Conversion Error: HVEEX0012E x").has_value());
}

TEST(DateTimePattern, TranslatesLettersAndQuotedText)
{
    const std::pair<const char*, const char*> cases[] = {
        {"yyyy-MM-dd HH:mm:ss.SSS", "%Y-%m-%d %H:%M:%S.%g"},
        {"yyMMdd", "%y%m%d"},
        {"EEEE, d MMM y h:mm:ss a", "%A, %d %b %Y %I:%M:%S %p"},
        {"yyyy'T'HH 'o''clock' '' 100%", "%YT%H o'clock ' 100%%"},
        {"'5%'D.SSSSSS", "5%%%j.%f"},
        {"", ""},
    };
    for (const auto& [pattern, format] : cases) {
        const ParsedPattern parsed = parsePattern(pattern);
        EXPECT_EQ(parsed.fault, "") << pattern;
        EXPECT_EQ(duckDialect().pattern(parsed.pattern), quotedLiteral(format)) << pattern;
    }
    EXPECT_EQ(parsePattern("yyyy-QQ").fault, "'QQ' has no meaning in it");
    EXPECT_EQ(parsePattern("yyyyy").fault, "'yyyyy' has no meaning in it");
    EXPECT_EQ(parsePattern("yyyy'T").fault, "an apostrophe is not closed");
}

} // namespace
} // namespace EmbeddedHV
