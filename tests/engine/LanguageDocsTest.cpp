#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "JobError.h"
#include "expression/FunctionTable.h"
#include "language/Parser.h"

/// The page about the language is part of the contract: what it says is compared with the code.
namespace EmbeddedHV {
namespace {

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// All that a pattern's groups match, one row for each match.
std::vector<std::vector<std::string>> matches(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern, std::regex::multiline);
    std::vector<std::vector<std::string>> rows;
    for (std::sregex_iterator it(text.begin(), text.end(), expression), end; it != end; ++it) {
        std::vector<std::string>& row = rows.emplace_back();
        for (std::size_t group = 1; group < it->size(); ++group)
            row.push_back(it->str(group));
    }
    return rows;
}

TEST(LanguageDocs, EveryExampleIsAProgram)
{
    const std::string page = contentOf(HV_DOCS);
    const std::string opening = "```hvl\n";
    int examples = 0;
    for (std::size_t at = page.find(opening); at != std::string::npos; ++examples) {
        const std::size_t begin = at + opening.size();
        const std::string example = page.substr(begin, page.find("```", begin) - begin);
        try {
            EXPECT_FALSE(language::parseProgram(example).items.empty()) << example;
        } catch (const JobError& error) {
            ADD_FAILURE() << error.text() << " in\n" << example;
        }
        at = page.find(opening, begin);
    }
    EXPECT_GE(examples, 3);
}

TEST(LanguageDocs, TheTableOfFunctionsIsTheCodes)
{
    std::string page = contentOf(HV_DOCS);
    page = page.substr(page.find("\n## Functions\n"));
    page = page.substr(0, page.find("\n### Patterns"));
    std::vector<std::vector<std::string>> coded;
    for (const Function& function : functionTable())
        coded.push_back({std::string(function.name), std::string(function.parameters),
                         std::string(function.result)});
    EXPECT_EQ(matches(page, R"(^\| ([a-z]\w+) \| ([^|]*?) ?\| (\w+) \| .+ \|$)"), [&coded] {
        coded.insert(coded.begin(), {"function", "arguments", "result"});
        return coded;
    }());
}

TEST(LanguageDocs, TheTableOfErrorsIsTheCodes)
{
    const auto documented = matches(contentOf(HV_DOCS), R"(^\| (HVE(?:PA|PL|EX)\d{4}[EWI]) \|)");
    const auto coded = matches(contentOf(HV_ERROR_IDS), R"("(HVE(?:PA|PL|EX)\d{4}[EWI])\")");
    EXPECT_EQ(documented, coded);
    EXPECT_EQ(std::set(coded.begin(), coded.end()).size(), coded.size());
    EXPECT_GE(coded.size(), 30U);
}

} // namespace
} // namespace EmbeddedHV
