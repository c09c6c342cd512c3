#include <filesystem>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "CFEntry.h"
#include "ExtNameStr.h"
#include "HostScopes.h"
#include "PathFactory.h"

namespace {

std::string nativeTemp()
{
    return ExtNameStr(CFAppHost::getInstance()->getTempDirectory()).GetNative();
}

} // namespace

TEST(Settings, TheLocaleComesFromTheFirstVariableThatIsSet)
{
    struct Case
    {
        std::optional<std::string> all, messages, lang;
        const char* locale;
    };
    const Case cases[] = {
        {"de_DE.UTF-8@euro", "fr_FR", "it_IT", "de_DE"},
        {"", "fr_FR.UTF-8", "it_IT", "fr_FR"},
        {std::nullopt, std::nullopt, "sr_RS@latin", "sr_RS"},
        {"C", "fr_FR", "it_IT", "en_US"},
        {"C.UTF-8", std::nullopt, std::nullopt, "en_US"},
        {std::nullopt, "POSIX", "it_IT", "en_US"},
        {std::nullopt, std::nullopt, std::nullopt, "en_US"},
    };
    for (const Case& row : cases) {
        const ScopedEnvironment all("LC_ALL", row.all);
        const ScopedEnvironment messages("LC_MESSAGES", row.messages);
        const ScopedEnvironment lang("LANG", row.lang);
        CFAppHost::update();
        EXPECT_EQ(CFAppHost::getInstance()->getLocale(), row.locale);
    }
}

TEST(Settings, WhatTheHostProgramSetsSurvivesAnUpdateUntilItIsTakenBack)
{
    const ScopedEnvironment locale("LC_ALL", "de_DE");
    const ScopedEnvironment temp("VEXA_TEMP", "/somewhere/else");
    const ScopedEnvironment threads("VEXA_THREADS", "7");
    CFAppHost& host = *CFAppHost::getInstance();
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

TEST(Settings, AThreadLimitThatIsNoneLeavesTheProcessors)
{
    const int processors = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    for (const char* text : {"0", "-2", "four", "4x", "", "99999999999999"}) {
        const ScopedEnvironment threads("VEXA_THREADS", text);
        CFAppHost::update();
        EXPECT_EQ(CFAppHost::getInstance()->getMaxCompThreads(), processors) << text;
    }
}

TEST(Settings, TheProcessHasATemporaryDirectoryOfItsOwnAndRemovesIt)
{
    const ScopedEnvironment none("VEXA_TEMP", std::nullopt);
    CFAppHost::update();
    const std::string directory = nativeTemp();
    struct stat state = {};
    ASSERT_EQ(::stat(directory.c_str(), &state), 0) << directory;
    EXPECT_EQ(state.st_mode & 0777U, 0700U);
    EXPECT_EQ(nativeTemp(), directory);
    std::filesystem::create_directories(directory + "/analytic-root/zor");

    // A child process has one of its own and leaves its parent's alone.
    const pid_t child = ::fork();
    if (child == 0) {
        const bool removed = CFAppHost::removeTempDirectory();
        const bool other = nativeTemp() != directory && CFAppHost::removeTempDirectory();
        ::_exit(removed && other && std::filesystem::exists(directory) ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);

    EXPECT_TRUE(CFAppHost::removeTempDirectory());
    EXPECT_FALSE(std::filesystem::exists(directory));
    EXPECT_TRUE(CFAppHost::removeTempDirectory());
}

TEST(Settings, TheTemporaryDirectoryGoesWhenTheProcessExits)
{
    int names[2] = {};
    ASSERT_EQ(::pipe(names), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string directory = nativeTemp();
        const bool told = ::write(names[1], directory.data(), directory.size()) > 0;
        std::exit(told && std::filesystem::exists(directory) ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    char directory[4096] = "";
    ASSERT_GT(::read(names[0], directory, sizeof(directory) - 1), 0);
    EXPECT_FALSE(std::filesystem::exists(directory)) << directory;
    ::close(names[0]);
    ::close(names[1]);
}

TEST(Settings, ATmpdirThatIsNotThereDoesNotLeaveTheProcessWithout)
{
    CFAppHost::removeTempDirectory();
    const ScopedEnvironment none("VEXA_TEMP", std::nullopt);
    const ScopedEnvironment missing("TMPDIR", "/no/such/directory");
    CFAppHost::update();
    EXPECT_TRUE(std::filesystem::is_directory(nativeTemp()));
    CFAppHost::removeTempDirectory();
}

TEST(Settings, ANamedTemporaryDirectoryStaysWhenTheProcessCleansUp)
{
    const ScopedFolder folder;
    {
        const ScopedEnvironment named("VEXA_TEMP", ExtNameStr(folder.path).GetNative());
        CFAppHost::update();
        EXPECT_EQ(GetVexaTempPath(), folder.path + "\\");
        ExtNameStr::mkdir(ExtNameStr(GetVexaTempPath() + "kept"));
    }
    CFAppHost::update();
    EXPECT_EQ(FileAttributesOf(ExtNameStr(folder.name("kept")).GetU16()), FileKind::Directory);
}

TEST(Settings, TheInstallationIsBesideTheLibraryUnlessItIsNamed)
{
    const ScopedEnvironment none("VEXA_HOME", std::nullopt);
    const PathFinder& finder = *PathFactory::getPathInstance();
    const std::string own = finder.getInstallationPath();
    EXPECT_TRUE(own.ends_with("\\hvinteg")) << own;
    EXPECT_EQ(own.find('/'), std::string::npos);
    EXPECT_EQ(FileAttributesOf(ExtNameStr(own + "\\strings\\en.json").GetU16()), FileKind::File);
    const ScopedEnvironment named("VEXA_HOME", "/opt/vexa//");
    EXPECT_EQ(finder.getInstallationPath(), "\\opt\\vexa");
}
