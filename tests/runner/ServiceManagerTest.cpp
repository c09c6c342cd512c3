#include "runner/StatHVServiceManager.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "CFAppHost.h"
#include "PathFactory.h"
#include "bridge/JNIObjectManager.h"
#include "runner/RunnerFixture.h"
#include "support/HVSimpleFile.h"
#include "support/HVStatTracer.h"
#include "support/Tracing.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> linesOf(const fs::path& file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The tracer's directory is set before anything asks for the tracer.
class ServiceManager : public ::testing::Test
{
protected:
    ServiceManager()
    {
        if (traceRoot.empty()) {
            traceRoot = fs::temp_directory_path() / ("hv_service_" + std::to_string(getpid()));
            setenv("HV_STAT_DEBUG_DIR", traceRoot.c_str(), 1);
            setenv("HV_STAT_DEBUG_MAXCOUNT", "0", 1);
        }
    }
    static void TearDownTestSuite() { fs::remove_all(traceRoot); }

    std::vector<std::string> log() const { return linesOf(traceRoot / "hvinteg.log"); }

    static fs::path traceRoot;
    ScriptedEngine engine;
};

fs::path ServiceManager::traceRoot;

TEST_F(ServiceManager, FirstCallSettlesWhetherTheStartIsLogged)
{
    EmbeddedHV::HVServiceManager* const service = StatHVServiceManager::get(false);
    EXPECT_EQ(StatHVServiceManager::get(true), service);
    EXPECT_TRUE(log().empty());
    EXPECT_EQ(engine.starts().size(), 1U);
    EXPECT_EQ(engine.calls()[0].env, JNIObjectManager::getManager()->getEnv());

    StatHVServiceManager::shutdown();
    StatHVServiceManager::shutdown();
    EXPECT_EQ(engine.calls().back().name, "stop");
    StatHVServiceManager::get(true);
    const auto start = engine.starts().back();
    const std::vector<std::string> expected{"HV Analytic Root: " + HVSimpleFile::GetAnalyticRoot(),
                                            "hv.af.components: " + start.componentsPath(),
                                            "locale: " + start.locale(),
                                            "ae.temp.path: " + *start.property("ae.temp.path"),
                                            "af.temp.path: " + *start.property("af.temp.path"),
                                            "mmr.threads: " + *start.property("mmr.threads"),
                                            "af.io.cache.size: 4194304"};
    EXPECT_EQ(log(), expected);
}

TEST_F(ServiceManager, SettingsFollowTheHost)
{
    // An earlier case may have fixed the host's own directory; a named one takes its place.
    CFAppHost& host = *CFAppHost::getInstance();
    const std::string root = (fs::temp_directory_path() / "some where").string();
    const struct
    {
        int threads;
        std::string directory;
        std::string threadsText;
    } rows[] = {{2, root, "2"}, {16, root + "/", "4"}, {4, root + "\\", "4"}};
    std::string expectedRoot = root + "/";
    std::replace(expectedRoot.begin(), expectedRoot.end(), '/', '\\');
    for (const auto& row : rows) {
        StatHVServiceManager::shutdown();
        host.setMaxCompThreads(row.threads);
        host.setTempDirectory(row.directory);
        host.setLocale("pt_BR");
        StatHVServiceManager::get(false);
        const auto start = engine.starts().back();
        using Properties = std::vector<std::pair<std::string, std::string>>;
        EXPECT_EQ(start.properties(), (Properties{{"ae.temp.path", expectedRoot + "ae"},
                                                  {"af.temp.path", expectedRoot + "af"},
                                                  {"mmr.threads", row.threadsText},
                                                  {"af.io.cache.size", "4194304"}}));
        EXPECT_EQ(start.locale(), "pt_BR");
        EXPECT_EQ(start.analyticRoot(), HVSimpleFile::GetAnalyticRootUTF());
        EXPECT_EQ(start.componentsPath(),
                  PathFactory::getPathInstance()->getInstallationPath() + "\\hv\\af\\components");
    }
    host.setMaxCompThreads(0);
    host.setTempDirectory("");
    host.setLocale("");
}

} // namespace
