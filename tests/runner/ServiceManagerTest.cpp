#include "runner/StatHVServiceManager.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

#include "CFAppHost.h"
#include "HVServiceManager.h"
#include "PathFactory.h"
#include "bridge/JNIObjectManager.h"
#include "support/HVSimpleFile.h"
#include "support/ScratchFolder.h"
#include "support/ScriptedEngine.h"

namespace {

/// The tracer's directory is set before anything asks for the tracer.
class ServiceManager : public ::testing::Test
{
protected:
    ServiceManager()
    {
        setenv("HV_STAT_DEBUG_DIR", scratch.path.c_str(), 1);
        setenv("HV_STAT_DEBUG_MAXCOUNT", "0", 1);
    }

    const ScratchFolder scratch;
    ScriptedEngine engine;
};

TEST_F(ServiceManager, FirstCallSettlesWhetherTheStartIsLogged)
{
    EmbeddedHV::HVServiceManager* const service = StatHVServiceManager::get(false);
    EXPECT_EQ(StatHVServiceManager::get(true), service);
    EXPECT_EQ(scratch.read("hvinteg.log"), "");
    EXPECT_EQ(engine.starts().size(), 1U);
    EXPECT_EQ(engine.calls()[0].env, JNIObjectManager::getManager()->getEnv());

    StatHVServiceManager::shutdown();
    StatHVServiceManager::shutdown();
    EXPECT_EQ(engine.calls().back().name, "stop");
    StatHVServiceManager::get(true);
    const auto start = engine.starts().back();
    EXPECT_EQ(scratch.read("hvinteg.log"),
              "HV Analytic Root: " + HVSimpleFile::GetAnalyticRoot() +
                  "\nhv.af.components: " + start.componentsPath() + "\nlocale: " + start.locale() +
                  "\nae.temp.path: " + *start.property("ae.temp.path") +
                  "\naf.temp.path: " + *start.property("af.temp.path") + "\nmmr.threads: " +
                  *start.property("mmr.threads") + "\naf.io.cache.size: 4194304\n");
}

TEST_F(ServiceManager, SettingsFollowTheHost)
{
    CFAppHost& host = *CFAppHost::getInstance();
    const std::tuple<int, const char*, const char*> rows[] = {
        {2, "/some where", "2"}, {16, "/some where/", "4"}, {4, "\\some where\\", "4"}};
    for (const auto& [threads, directory, threadsText] : rows) {
        StatHVServiceManager::shutdown();
        host.setMaxCompThreads(threads);
        host.setTempDirectory(directory);
        host.setLocale("pt_BR");
        StatHVServiceManager::get(false);
        const auto start = engine.starts().back();
        using Properties = std::vector<std::pair<std::string, std::string>>;
        EXPECT_EQ(start.properties(), (Properties{{"ae.temp.path", "\\some where\\ae"},
                                                  {"af.temp.path", "\\some where\\af"},
                                                  {"mmr.threads", threadsText},
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
