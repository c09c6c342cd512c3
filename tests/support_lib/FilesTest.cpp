#include "support/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <set>
#include <utility>

#include "ScratchDir.h"
#include "support/DirectorySpecific.h"
#include "support/FileSpecific.h"
#include "support/HVSimpleFile.h"

namespace {

namespace fs = std::filesystem;

std::string nativeOf(const std::string& host)
{
    std::string result = host;
    for (char& character : result)
        character = character == '\\' ? '/' : character;
    return result;
}

TEST(UniqueName, NumberGoesBeforeTheLastDot)
{
    const ScratchDir scratch;
    const struct
    {
        const char* wanted;
        const char* expected;
    } rows[] = {
        {"free.sav", "free.sav"}, {"a.sav", "a_2.sav"}, {"plain", "plain_1"}, {"d.x", "d_1.x"}};
    scratch.put("a.sav");
    scratch.put("a_1.sav");
    scratch.put("d.x/inner");
    scratch.put("plain");
    for (const auto& row : rows) {
        // The name of the scratch directory has no dot, so the only one is in the wanted name.
        EXPECT_EQ(FormUniqueFileName(scratch.host + row.wanted), scratch.host + row.expected);
    }
    scratch.put("e.f/plain");
    EXPECT_EQ(FormUniqueFileName(scratch.host + "e.f\\plain"), scratch.host + "e_1.f\\plain");
    EXPECT_EQ(DirectorySpecific(scratch.host).FormUniqueFileName("a.sav"),
              scratch.host + "a_2.sav");
}

TEST(Directories, AreMadeOneLevelAtATime)
{
    const ScratchDir scratch;
    EXPECT_TRUE(MakeDir(scratch.host + "one"));
    EXPECT_FALSE(MakeDir(scratch.host + "one"));
    EXPECT_FALSE(MakeDir(scratch.host + "two\\three"));
    EXPECT_TRUE(scratch.has("one"));
    EXPECT_FALSE(scratch.has("two"));
}

TEST(Directories, AreRemovedWithAllThatIsInThem)
{
    const ScratchDir scratch;
    scratch.put("tree/a/b/c.txt");
    scratch.put("tree/.hidden");
    fs::create_directories(scratch.path / "tree/empty");
    scratch.put("outside/kept.txt");
    fs::create_directory_symlink(scratch.path / "outside", scratch.path / "tree/link");
    EXPECT_TRUE(RemoveDir(scratch.host + "tree"));
    EXPECT_FALSE(scratch.has("tree"));
    EXPECT_TRUE(scratch.has("outside/kept.txt"));
    EXPECT_TRUE(RemoveDir(scratch.host + "missing"));
}

TEST(Copying, ReplacesTheTarget)
{
    const ScratchDir scratch;
    const std::string binary("a\r\n\0b", 5);
    scratch.put("source", binary);
    scratch.put("target", "something much longer than the source");
    EXPECT_TRUE(StatCopyFile(nativeOf(scratch.host) + "target", scratch.host + "source"));
    EXPECT_EQ(scratch.read("target"), binary);
    scratch.put("empty", "");
    EXPECT_TRUE(StatCopyFile(scratch.host + "target", scratch.host + "empty"));
    EXPECT_EQ(scratch.read("target"), "");
    EXPECT_FALSE(StatCopyFile(scratch.host + "other", scratch.host + "missing"));
    EXPECT_FALSE(scratch.has("other"));
    EXPECT_FALSE(StatCopyFile(scratch.host + "no\\dir", scratch.host + "source"));
}

TEST(FileFacts, TellFileDirectoryAndNothingApart)
{
    const ScratchDir scratch;
    scratch.put("file.txt");
    scratch.put("fixed.txt");
    fs::permissions(scratch.path / "fixed.txt", fs::perms::owner_read);
    const struct
    {
        std::string name;
        bool exists;
        bool directory;
        bool readOnly;
    } rows[] = {{"file.txt", true, false, false},
                {"fixed.txt", true, false, true},
                {"missing.txt", false, false, false},
                {"", true, true, false}};
    for (const auto& row : rows) {
        const FileSpecific file(scratch.host + row.name);
        EXPECT_TRUE(file.IsValid()) << row.name;
        EXPECT_EQ(file.Exists(), row.exists) << row.name;
        EXPECT_EQ(file.IsDir(), row.directory) << row.name;
        EXPECT_EQ(file.ReadOnly(), row.readOnly) << row.name;
        EXPECT_FALSE(file.IsInUse()) << row.name;
    }
    const FileSpecific file(nativeOf(scratch.host) + "file.txt");
    EXPECT_EQ(file.Name(), "file.txt");
    EXPECT_EQ(file.Path(), scratch.host);
    EXPECT_EQ(file.ExpandPath(), scratch.host + "file.txt");
}

TEST(FileFacts, AreEmptyForANameThatCannotBeExpanded)
{
    const FileSpecific file("");
    EXPECT_FALSE(file.IsValid());
    EXPECT_FALSE(file.Exists());
    EXPECT_FALSE(file.IsDir());
    EXPECT_EQ(file.ExpandPath(), "");
    const DirectorySpecific directory("");
    EXPECT_FALSE(directory.Exists());
    EXPECT_TRUE(RemoveDir(""));
}

TEST(Listing, GivesEachMatchingEntryOnce)
{
    const ScratchDir scratch;
    scratch.put("a.sav");
    scratch.put("b.csv");
    scratch.put("sub/c.sav");
    DirectorySpecific directory(nativeOf(scratch.host) + "//");
    EXPECT_EQ(directory.ExpandPath(), scratch.host);
    const auto list = [&directory](bool found) {
        std::set<std::pair<std::string, bool>> entries;
        for (; found; found = directory.Next()) {
            std::string name;
            bool isDirectory = false;
            directory.GetFileSpec(name, isDirectory);
            EXPECT_TRUE(entries.emplace(name, isDirectory).second) << name;
        }
        return entries;
    };
    using Entries = std::set<std::pair<std::string, bool>>;
    EXPECT_EQ(list(directory.BrowseFile()),
              (Entries{{"a.sav", false}, {"b.csv", false}, {"sub", true}}));
    EXPECT_EQ(list(directory.BrowseFile("*.sav")), (Entries{{"a.sav", false}}));
    EXPECT_FALSE(directory.Next());
}

TEST(Listing, OfNothingHasNothingToReport)
{
    const ScratchDir scratch;
    DirectorySpecific directory(scratch.host);
    std::string name = "earlier";
    bool isDirectory = true;
    EXPECT_FALSE(directory.Next());
    EXPECT_FALSE(directory.BrowseFile());
    directory.GetFileSpec(name, isDirectory);
    EXPECT_EQ(name, "earlier");
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(DirectorySpecific(scratch.host + "missing").BrowseFile());
}

bool exists(const std::string& host)
{
    return fs::exists(nativeOf(host));
}

TEST(ScratchFile, TemporaryOneIsThereAtOnceAndGoes)
{
    std::string path;
    {
        const HVSimpleFile file("scratch.txt", false, true);
        const HVSimpleFile second("scratch.txt", false, true);
        path = file.GetAbsolutePath();
        EXPECT_TRUE(exists(path));
        EXPECT_EQ(fs::file_size(nativeOf(path)), 0U);
        EXPECT_EQ(path, GetVexaTempPath() + file.GetFileName());
        EXPECT_EQ(second.GetFileName(), "scratch_1.txt");
    }
    EXPECT_FALSE(exists(path));
}

TEST(ScratchFile, AnalyticOneIsTheEnginesToWrite)
{
    const std::string directory = HVSimpleFile::GetAnalyticDefaultDir();
    EXPECT_EQ(directory, HVSimpleFile::GetAnalyticRoot() + "zor\\public\\");
    EXPECT_EQ(HVSimpleFile::GetAnalyticRoot(), GetVexaTempPath() + "analytic-root\\");
    fs::create_directories(nativeOf(directory));
    for (const bool asDirectory : {false, true}) {
        std::string path;
        {
            const HVSimpleFile file("result.hvbf", true, true);
            path = file.GetAbsolutePath();
            EXPECT_EQ(path, directory + "result.hvbf");
            EXPECT_FALSE(exists(path));
            if (asDirectory)
                fs::create_directories(nativeOf(path + "\\in\\it"));
            std::ofstream(nativeOf(path + (asDirectory ? "\\in\\it\\part" : ""))) << "x";
            EXPECT_TRUE(exists(path));
        }
        EXPECT_FALSE(exists(path)) << asDirectory;
    }
    fs::remove_all(nativeOf(HVSimpleFile::GetAnalyticRoot()));
}

TEST(ScratchFile, LastCopyRemovesIt)
{
    auto first = std::make_unique<HVSimpleFile>("copied.txt", false, true);
    HVSimpleFile other("other.txt", false, true);
    const std::string otherPath = other.GetAbsolutePath();
    const std::string path = first->GetAbsolutePath();
    other = *first;
    EXPECT_FALSE(exists(otherPath));
    first.reset();
    EXPECT_TRUE(exists(path));
    EXPECT_EQ(other.GetAbsolutePath(), path);
    other = HVSimpleFile("third.txt", false, true);
    EXPECT_FALSE(exists(path));
}

TEST(ScratchFile, StaysWithoutTheFlag)
{
    std::string path;
    {
        const HVSimpleFile file("kept.txt", false, false);
        path = file.GetAbsolutePath();
    }
    EXPECT_TRUE(fs::remove(nativeOf(path)));
}

} // namespace
