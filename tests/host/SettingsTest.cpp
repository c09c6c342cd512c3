#include "CFAppHost.h"

#include <filesystem>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

#include "CFEntry.h"
#include "ExtNameStr.h"
#include "PathFactory.h"
#include "host/ChildProcess.h"
#include "support/HostScopes.h"
#include "support/ScratchFolder.h"

namespace {

namespace fs = std::filesystem;

/// The settings as of their defaults, and again after each case.
class Settings : public testing::Test
{
protected:
    void SetUp() override { CFAppHost::update(); }
    void TearDown() override { CFAppHost::update(); }

    static fs::path nativeTemp()
    {
        return ExtNameStr(CFAppHost::getInstance()->getTempDirectory()).GetNative();
    }

    CFAppHost& host = *CFAppHost::getInstance();

private:
    const ScopedEnvironment _noTemp{"VEXA_TEMP", std::nullopt};
};

} // namespace

TEST_F(Settings, TheLocaleComesFromTheFirstVariableThatIsSet)
{
    const std::tuple<std::optional<std::string>, std::optional<std::string>,
                     std::optional<std::string>, const char*>
        rows[] = {
            {"de_DE.UTF-8@euro", "fr_FR", "it_IT", "de_DE"},
            {"", "fr_FR.UTF-8", "it_IT", "fr_FR"},
            {std::nullopt, std::nullopt, "sr_RS@latin", "sr_RS"},
            {"C.UTF-8", "fr_FR", "it_IT", "en_US"},
            {std::nullopt, "POSIX", "it_IT", "en_US"},
            {std::nullopt, std::nullopt, std::nullopt, "en_US"},
        };
    for (const auto& [all, messages, lang, locale] : rows) {
        const ScopedEnvironment inAll("LC_ALL", all);
        const ScopedEnvironment inMessages("LC_MESSAGES", messages);
        const ScopedEnvironment inLang("LANG", lang);
        CFAppHost::update();
        EXPECT_EQ(host.getLocale(), locale);
    }
}

TEST_F(Settings, DatesAndTimesMayHaveALocaleOfTheirOwn)
{
    const ScopedEnvironment all("LC_ALL", std::nullopt);
    const ScopedEnvironment messages("LC_MESSAGES", "fr_FR");
    const ScopedEnvironment times("LC_TIME", "sv_SE.UTF-8");
    CFAppHost::update();
    EXPECT_EQ(host.getTimeLocale(), "sv_SE");
    host.setTimeLocale("da_DK");
    EXPECT_EQ(host.getTimeLocale(), "da_DK");
    EXPECT_EQ(host.getLocale(), "fr_FR");
    host.setTimeLocale("");
    EXPECT_EQ(host.getTimeLocale(), "sv_SE");
}

TEST_F(Settings, WhatTheHostProgramSetsSurvivesAnUpdateUntilItIsTakenBack)
{
    const ScopedEnvironment locale("LC_ALL", "de_DE");
    const ScopedEnvironment temp("VEXA_TEMP", "/somewhere/else");
    const ScopedEnvironment threads("VEXA_THREADS", "7");
    host.setLocale("ja_JP");
    host.setTempDirectory("c:/x");
    host.setMaxCompThreads(3);
    CFAppHost::update();
    EXPECT_EQ(host.getLocale(), "ja_JP");
    EXPECT_EQ(host.getTempDirectory(), "c:/x");
    EXPECT_EQ(host.getMaxCompThreads(), 3);
    EXPECT_EQ(GetVexaTempPath(), "c:\\x\\");
    EXPECT_STREQ(host.createCFHostingCalbck()->locale(), "ja_JP");

    const std::string& held = host.getLocale();
    host.setLocale("");
    host.setTempDirectory("");
    host.setMaxCompThreads(0);
    EXPECT_EQ(held, "ja_JP");
    EXPECT_EQ(host.getLocale(), "de_DE");
    EXPECT_EQ(host.getTempDirectory(), "\\somewhere\\else");
    EXPECT_EQ(host.getMaxCompThreads(), 7);
}

TEST_F(Settings, TheTemporaryPathEndsInASeparatorInAnyEncoding)
{
    const ScopedCodePage page("Shift_JIS");
    const ScopedEnvironment temp("VEXA_TEMP", "/tmp/表");
    CFAppHost::update();
    EXPECT_EQ(GetVexaTempPath(), "\\tmp\\\x95\x5C\\");
}

TEST_F(Settings, AThreadLimitThatIsNoneLeavesTheProcessors)
{
    const int processors = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    for (const char* text : {"0", "-2", "four", "4x", "", "99999999999999"}) {
        const ScopedEnvironment threads("VEXA_THREADS", text);
        CFAppHost::update();
        EXPECT_EQ(host.getMaxCompThreads(), processors) << text;
    }
}

TEST_F(Settings, TheProcessHasATemporaryDirectoryOfItsOwnAndRemovesIt)
{
    const fs::path directory = nativeTemp();
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all);
    EXPECT_EQ(nativeTemp(), directory);
    fs::create_directories(directory / "analytic-root/zor");
    // A child process has one of its own and leaves its parent's alone.
    EXPECT_TRUE(holdsInChild([&directory] {
        return CFAppHost::removeTempDirectory() && nativeTemp() != directory &&
               CFAppHost::removeTempDirectory() && fs::exists(directory);
    }));
    EXPECT_TRUE(CFAppHost::removeTempDirectory());
    EXPECT_FALSE(fs::exists(directory));
    EXPECT_TRUE(CFAppHost::removeTempDirectory());
}

TEST_F(Settings, TheTemporaryDirectoryGoesWhenTheProcessExits)
{
    const ScratchFolder scratch;
    const ScopedEnvironment inside("TMPDIR", scratch.path.string());
    EXPECT_TRUE(holdsInChild([&scratch] { return nativeTemp().parent_path() == scratch.path; }));
    EXPECT_TRUE(fs::is_empty(scratch.path));
}

TEST_F(Settings, ATmpdirThatIsNotThereDoesNotLeaveTheProcessWithout)
{
    const ScopedEnvironment missing("TMPDIR", "/no/such/directory");
    EXPECT_TRUE(holdsInChild([] { return fs::is_directory(nativeTemp()); }));
}

TEST_F(Settings, ANamedTemporaryDirectoryStaysWhenTheProcessCleansUp)
{
    const ScratchFolder scratch;
    EXPECT_TRUE(holdsInChild([&scratch] {
        const ScopedEnvironment named("VEXA_TEMP", scratch.path.string());
        CFAppHost::update();
        ExtNameStr::mkdir(ExtNameStr(GetVexaTempPath() + "kept"));
        return CFAppHost::removeTempDirectory();
    }));
    EXPECT_TRUE(scratch.has("kept"));
}

TEST_F(Settings, TheInstallationIsBesideTheLibraryUnlessItIsNamed)
{
    const ScopedEnvironment none("VEXA_HOME", std::nullopt);
    const PathFinder& finder = *PathFactory::getPathInstance();
    const std::string own = finder.getInstallationPath();
    EXPECT_TRUE(own.ends_with("\\hvinteg")) << own;
    EXPECT_EQ(own.find('/'), std::string::npos);
    EXPECT_TRUE(fs::exists(ExtNameStr(own + "\\strings\\en.json").GetNative()));
    const ScopedEnvironment named("VEXA_HOME", "/opt/vexa//");
    EXPECT_EQ(finder.getInstallationPath(), "\\opt\\vexa");
}
