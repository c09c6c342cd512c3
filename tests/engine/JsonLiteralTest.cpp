#include <gtest/gtest.h>

#include <sstream>

#include "ErrorIds.h"
#include "JobError.h"
#include "language/JsonLiteral.h"
#include "language/Parser.h"

namespace EmbeddedHV::language {
namespace {

std::string convert(const std::string& text, const std::string& definitions = {})
{
    const Program program = parseProgram(definitions);
    return jsonLiteral(*parseExpression(text), boundValues(program), "read").dump();
}

using Error = std::pair<std::string, std::string>;

Error refusalOf(const std::string& text, const std::string& definitions = {})
{
    try {
        return {"none", convert(text, definitions)};
    } catch (const JobError& fault) {
        return {fault.id(), fault.text()};
    }
}

TEST(JsonLiteral, KeepsEveryKindOfValueAndTheOrderOfKeys)
{
    EXPECT_EQ(convert(R"({"z": [1, -2, 2.5, -0.5, "x/\u00e9", true, null], "a": {}, "m": []})"),
              R"({"z":[1,-2,2.5,-0.5,"x/é",true,null],"a":{},"m":[]})");
    EXPECT_EQ(convert("-9223372036854775808"), "-9223372036854775808");
}

TEST(JsonLiteral, PutsDefinitionsInTheirPlaces)
{
    EXPECT_EQ(
        convert("{\"a\": path, \"b\": [conf, conf]}", "val path = \"p\" val conf = {\"c\": path}"),
        R"({"a":"p","b":[{"c":"p"},{"c":"p"}]})");
}

TEST(JsonLiteral, RefusesWhatIsNoLiteral)
{
    EXPECT_EQ(refusalOf("{\"a\":\n [1 + 2]}"),
              Error(errors::kNotLiteral,
                    "step read, line 2, column 5: expected a JSON value, found an operator"));
    for (const char* text : {"f(1)", "x => 1", "(1, 2)", "- -1", "-\"a\""})
        EXPECT_EQ(refusalOf(text).first, errors::kNotLiteral) << text;
    EXPECT_EQ(refusalOf("conff", "val conf = 1"),
              Error(errors::kUnknownName,
                    "step read, line 1, column 1: expected a JSON value, but no expression is "
                    "bound to the name 'conff'; did you mean \"conf\"?"));
    EXPECT_EQ(refusalOf("c", "val c = read(x)").first, errors::kUnknownName);
}

TEST(JsonLiteral, RefusesEndlessLiterals)
{
    EXPECT_EQ(refusalOf("a", "val a = [b] val b = {\"c\": a}").first, errors::kCycle);
    std::ostringstream doubling;
    doubling << "val a0 = [1, 1] ";
    for (int i = 1; i < 40; ++i)
        doubling << "val a" << i << " = [a" << i - 1 << ", a" << i - 1 << "] ";
    EXPECT_EQ(refusalOf("a39", doubling.str()).first, errors::kLiteralSize);
}

} // namespace
} // namespace EmbeddedHV::language
