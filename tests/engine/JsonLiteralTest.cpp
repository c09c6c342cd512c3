#include <gtest/gtest.h>

#include <sstream>

#include "ErrorIds.h"
#include "JobError.h"
#include "language/JsonLiteral.h"
#include "language/Parser.h"

namespace EmbeddedHV::language {
namespace {

/// A program's definitions, by name.
class JsonLiteral : public testing::Test
{
protected:
    std::string convert(const std::string& text, const std::string& definitions = {})
    {
        _program = parseProgram(definitions);
        _expression = parseExpression(text);
        
        return jsonLiteral(*_expression, lookup, "read").dump();
    }
    std::pair<std::string, std::string> error(const std::string& text,
                                              const std::string& definitions = {})
    {
        try {
            return {"none", convert(text, definitions)};
        } catch (const JobError& fault) {
            return {fault.id(), fault.text()};
        }
    }

private:
    const Expression* find(const std::string& name) const
    {
        for (const auto& item : _program.items) {
            const auto* definition = std::get_if<Definition>(&item);
            if (definition != nullptr && definition->name == name)
                if (const auto* bound = std::get_if<ExpressionPtr>(&definition->value))
                    return bound->get();
        }
        return nullptr;
    }

    Program _program;
    ExpressionPtr _expression;
};

TEST_F(JsonLiteral, KeepsEveryKindOfValueAndTheOrderOfKeys)
{
    EXPECT_EQ(convert(R"({"z": [1, -2, 2.5, -0.5, "x/\u00e9", true, null], "a": {}, "m": []})"),
              R"({"z":[1,-2,2.5,-0.5,"x/é",true,null],"a":{},"m":[]})");
    EXPECT_EQ(convert("-9223372036854775808"), "-9223372036854775808");
}

TEST_F(JsonLiteral, PutsDefinitionsInTheirPlaces)
{
    EXPECT_EQ(
        convert("{\"a\": path, \"b\": [conf, conf]}", "val path = \"p\" val conf = {\"c\": path}"),
        R"({"a":"p","b":[{"c":"p"},{"c":"p"}]})");
}

TEST_F(JsonLiteral, RefusesWhatIsNoLiteral)
{
    using Error = std::pair<std::string, std::string>;
    EXPECT_EQ(error("{\"a\":\n [1 + 2]}"),
              Error(errors::kNotLiteral,
                    "step read, line 2, column 5: expected a JSON value, found an operator"));
    EXPECT_EQ(error("f(1)").first, errors::kNotLiteral);
    EXPECT_EQ(error("x => 1").first, errors::kNotLiteral);
    EXPECT_EQ(error("(1, 2)").first, errors::kNotLiteral);
    EXPECT_EQ(error("- -1").first, errors::kNotLiteral);
    EXPECT_EQ(error("-\"a\"").first, errors::kNotLiteral);
    EXPECT_EQ(error("conf"), Error(errors::kUnknownName,
                                   "step read, line 1, column 1: expected a JSON value, but no "
                                   "expression is bound to the name 'conf'"));
    EXPECT_EQ(error("c", "val c = read(x)").first, errors::kUnknownName);
}

TEST_F(JsonLiteral, RefusesEndlessLiterals)
{
    EXPECT_EQ(error("a", "val a = [b] val b = {\"c\": a}").first, errors::kCycle);
    std::ostringstream doubling;
    doubling << "val a0 = [1, 1] ";
    for (int i = 1; i < 40; ++i)
        doubling << "val a" << i << " = [a" << i - 1 << ", a" << i - 1 << "] ";
    EXPECT_EQ(error("a39", doubling.str()).first, errors::kLiteralSize);
}

} // namespace
} // namespace EmbeddedHV::language
