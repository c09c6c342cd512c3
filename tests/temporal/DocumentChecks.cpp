#include "temporal/DocumentChecks.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

namespace TemporalTest {
namespace {

class DocumentChecks : public testing::Environment
{
public:
    void add(const std::string& schema, const std::string& name, const std::string& text)
    {
        std::filesystem::create_directories(_folder);
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        const std::string path = _folder + "/" + test->name() + std::to_string(++_documents) + name;
        std::ofstream(path, std::ios::binary) << text;
        _paths[schema] += " '" + path + "'";
    }

    void TearDown() override
    {
        for (const auto& [schema, paths] : _paths)
            EXPECT_EQ(std::system((HV_VALIDATE " '" + schema + "'" + paths).c_str()), 0);
        std::filesystem::remove_all(_folder);
    }

private:
    std::string _folder = testing::TempDir() + HV_PROGRAM "-documents";
    std::map<std::string, std::string> _paths; ///< of the documents, by schema
    int _documents = 0;
};

// gtest owns and deletes it.
auto* const checks =
    static_cast<DocumentChecks*>(testing::AddGlobalTestEnvironment(new DocumentChecks));

} // namespace

void expectValid(const std::string& schema, const std::string& name, const std::string& text)
{
    checks->add(schema, name, text);
}

} // namespace TemporalTest
