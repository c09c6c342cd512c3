#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

#include "JobError.h"
#include "engine/DocsPage.h"
#include "functions/FunctionTable.h"
#include "language/Parser.h"

/// The page about the language is part of the contract: what it says is compared with the code.
namespace EmbeddedHV {
namespace {

using docspage::contentOf;
using docspage::Row;
using docspage::tableRows;

/// Whether a text is an id of an error or a message.
bool isErrorId(const std::string& text)
{
    return text.size() == 10 && text.starts_with("HVE");
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
    std::vector<Row> documented = tableRows(page);
    ASSERT_FALSE(documented.empty());
    documented.erase(documented.begin()); // the heading
    std::vector<Row> coded;
    for (const Function& function : kFunctions)
        coded.push_back({std::string(function.name), std::string(function.parameters),
                         std::string(function.result)});
    for (Row& row : documented) {
        ASSERT_EQ(row.size(), 4U) << row.front();
        EXPECT_FALSE(row.back().empty()) << row.front() << " has no meaning";
        row.pop_back();
    }
    std::sort(documented.begin(), documented.end());
    std::sort(coded.begin(), coded.end());
    EXPECT_EQ(documented, coded);
}

TEST(LanguageDocs, TheTableOfErrorsIsTheCodes)
{
    std::vector<std::string> documented;
    for (const Row& row : tableRows(contentOf(HV_DOCS)))
        if (isErrorId(row.front()))
            documented.push_back(row.front());
    std::vector<std::string> coded;
    std::istringstream header(contentOf(HV_ERROR_IDS) + contentOf(HV_FILE_FAULT_IDS));
    for (std::string part; std::getline(header, part, '"');)
        if (isErrorId(part))
            coded.push_back(part);
    std::sort(documented.begin(), documented.end());
    std::sort(coded.begin(), coded.end());
    EXPECT_EQ(documented, coded);
    EXPECT_EQ(std::set(coded.begin(), coded.end()).size(), coded.size());
    EXPECT_GE(coded.size(), 30U);
}

} // namespace
} // namespace EmbeddedHV
