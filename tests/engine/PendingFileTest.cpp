#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DataFileNames.h"
#include "datafile/Fault.h"
#include "datafile/PendingFile.h"
#include "datafile/PrivateFolder.h"

namespace EmbeddedHV {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class PendingFileTest : public testing::Test
{
protected:
    PendingFileTest() { fs::create_directory(folder); }
    ~PendingFileTest() override { fs::remove_all(folder); }

    std::string at(const std::string& name) const { return (folder / name).string(); }
    void put(const std::string& name, const std::string& text, mode_t mode) const
    {
        std::ofstream(folder / name) << text;
        chmod(at(name).c_str(), mode);
    }
    std::string read(const std::string& name) const
    {
        std::ifstream file(folder / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    mode_t mode(const std::string& path) const
    {
        struct stat state = {};
        return stat(path.c_str(), &state) == 0 ? state.st_mode & 07777 : 0;
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder))
            all.push_back(entry.path().filename());
        std::sort(all.begin(), all.end());
        return all;
    }
    /// What a refusal to write says, or an empty text.
    std::string refusalOf(const std::string& name) const
    {
        try {
            PendingFile(at(name), "write").path();
            return {};
        } catch (const Fault& fault) {
            return fault.text();
        }
    }
    /// Writes a file in another process, which is killed before it has finished.
    void leavePart(const std::function<void()>& make) const
    {
        const pid_t child = fork();
        if (child == 0) {
            make();
            raise(SIGKILL);
        }
        waitpid(child, nullptr, 0);
    }

    const fs::path folder = fs::path(testing::TempDir()) / ("pending_" + std::to_string(getpid()));
};

TEST_F(PendingFileTest, AFileKeepsThePermissionsOfTheOneThatItReplaces)
{
    const mode_t mask = umask(022);
    for (const mode_t before : {0U, 0600U, 0640U, 0666U, 0700U}) {
        if (before != 0)
            put("out", "old", before);
        PendingFile file(at("out"), "");
        file.write("secret");
        // From the first byte on.
        EXPECT_EQ(mode(file.path()), before == 0 ? 0644 : before);
        EXPECT_EQ(read("out"), before == 0 ? "" : "old");
        file.commit();
        EXPECT_EQ(mode(at("out")), before == 0 ? 0644 : before);
        EXPECT_EQ(read("out"), "secret");
        EXPECT_EQ(names(), std::vector<std::string>{"out"});
    }
    umask(mask);
}

TEST_F(PendingFileTest, ALinkStaysAndWhatItLeadsToIsReplaced)
{
    fs::create_directory(folder / "deep");
    put("deep/out", "old", 0600);
    fs::create_symlink("deep/out", folder / "link");
    PendingFile file(at("link"), "");
    file.write("new");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(read("deep/out"), "new");
    EXPECT_EQ(mode(at("deep/out")), 0600U);
}

TEST_F(PendingFileTest, ALinkOfAnotherUserIsRefusedInAFolderThatAllShare)
{
    constexpr uid_t kOther = 65534;
    fs::create_symlink("out", folder / "link");
    put("out", "old", 0600);
    if (lchown(at("link").c_str(), kOther, kOther) != 0)
        GTEST_SKIP() << "only root can make a link of another user";
    const std::pair<mode_t, bool> rows[] = {{01777, true}, {0777, false}, {01755, false}};
    for (const auto& [folderMode, isRefused] : rows) {
        chmod(folder.c_str(), folderMode);
        EXPECT_EQ(refusalOf("link").find("another user") != std::string::npos, isRefused);
    }
}

TEST_F(PendingFileTest, WhatMayNotBeReplacedIsRefusedAndNamed)
{
    put("protected", "keep", 0444);
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    fs::create_directory(folder / "folder");
    fs::create_symlink("folder", folder / "to folder");
    mkfifo(at("pipe").c_str(), 0600);
    const auto before = names();
    const std::string tooLong(300, 'n');
    const std::pair<const char*, const char*> rows[] = {
        {"protected", "protected: the file is protected against writing"},
        {"dangling", "dangling: this is a link that leads nowhere"},
        {"loop", "loop: this is a link that leads nowhere"},
        {"folder", "folder: this is a folder, not a file"},
        {"to folder", "to folder: this is a folder, not a file"},
        {"pipe", "pipe: this is not a regular file"},
        {"none/out", "there is no folder"},
        {tooLong.c_str(), "the file cannot be written: File name too long"},
    };
    for (const auto& [name, text] : rows)
        EXPECT_THAT(refusalOf(name), HasSubstr(text));
    EXPECT_EQ(names(), before);
    EXPECT_EQ(read("protected"), "keep");
}

#ifndef __SANITIZE_THREAD__
// They fork. The thread sanitizer counts at most 64 locks, and the database's allocator takes more
// of them before a fork.

TEST_F(PendingFileTest, WhatAKilledProcessLeavesIsSweptByItsLock)
{
    leavePart([this] {
        PendingFile file(at("killed.csv"), "");
        file.write("half");
        raise(SIGKILL);
    });
    ASSERT_EQ(names().size(), 1U);
    PendingFile living(at("living.csv"), "");
    living.write("half");
    put(".living.csv.hv-1-x.part", "not of this form", 0644);
    sweepParts(folder.string());
    const std::string kept = fs::path(living.path()).filename();
    EXPECT_EQ(names().size(), 2U);
    EXPECT_TRUE(fs::exists(folder / kept));
    living.commit();
    EXPECT_EQ(names(), (std::vector<std::string>{".living.csv.hv-1-x.part", "living.csv"}));
}

TEST_F(PendingFileTest, AFolderIsPrivateAsLongAsItsProcessHasIt)
{
    std::string path;
    {
        const datafile::PrivateFolder own(folder.string(), "own-");
        path = own.path();
        EXPECT_TRUE(datafile::isPrivateFolder(path));
        chmod(path.c_str(), 0750);
        EXPECT_FALSE(datafile::isPrivateFolder(path));
    }
    EXPECT_FALSE(datafile::isPrivateFolder(path));
    fs::create_directory(path);
    chmod(path.c_str(), 0700);
    EXPECT_FALSE(datafile::isPrivateFolder(path)); // nobody locks it
}

TEST_F(PendingFileTest, FoldersOfKilledProcessesAreSweptToo)
{
    leavePart([this] {
        const PrivateFolder dead(folder.string(), "hv-");
        std::ofstream(dead.path() + "/spill") << "much";
        raise(SIGKILL);
    });
    ASSERT_EQ(names().size(), 1U);
    {
        const PrivateFolder living(folder.string(), "hv-");
        EXPECT_EQ(mode(living.path()), 0700U);
        EXPECT_EQ(names(), std::vector<std::string>{fs::path(living.path()).filename()});
        const PrivateFolder next(folder.string(), "hv-");
        EXPECT_EQ(names().size(), 2U);
    }
    EXPECT_TRUE(names().empty());
    std::error_code error;
    makeOwnersFolders(at("a/b/c"), error);
    EXPECT_FALSE(error);
    EXPECT_EQ(mode(at("a")), 0700U);
    EXPECT_EQ(mode(at("a/b/c")), 0700U);
}
#endif

} // namespace
} // namespace EmbeddedHV
