#include "support/Files.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <tuple>
#include <utility>

#include "support/DirectorySpecific.h"
#include "support/FileSpecific.h"
#include "support/HVSimpleFile.h"
#include "support/HostScopes.h"
#include "support/ScratchFolder.h"

namespace {

namespace fs = std::filesystem;

fs::path nativeOf(const std::string& host)
{
    return ExtNameStr(host).GetNative();
}

TEST(UniqueName, NumberGoesBeforeTheLastDot)
{
    const ScratchFolder scratch;
    for (const char* name : {"a.sav", "a_1.sav", "d.x/inner", "plain", "e.f/plain"})
        scratch.put(name);
    // The name of the scratch folder has no dot, so the last one is in the wanted name.
    const std::pair<const char*, const char*> rows[] = {{"free.sav", "free.sav"},
                                                        {"a.sav", "a_2.sav"},
                                                        {"plain", "plain_1"},
                                                        {"d.x", "d_1.x"},
                                                        {"e.f\\plain", "e_1.f\\plain"}};
    DirectorySpecific directory(scratch.folder);
    for (const auto& [wanted, expected] : rows) {
        EXPECT_EQ(FormUniqueFileName(scratch.name(wanted)), scratch.name(expected));
        EXPECT_EQ(directory.FormUniqueFileName(wanted), scratch.name(expected));
    }
}

TEST(Directories, AreMadeOneLevelAtATime)
{
    const ScratchFolder scratch;
    EXPECT_TRUE(MakeDir(scratch.name("one")));
    EXPECT_FALSE(MakeDir(scratch.name("one")));
    EXPECT_FALSE(MakeDir(scratch.name("two\\three")));
    EXPECT_TRUE(scratch.has("one"));
    EXPECT_FALSE(scratch.has("two"));
}

TEST(Directories, AreRemovedWithAllThatIsInThem)
{
    const ScratchFolder scratch;
    for (const char* name : {"tree/a/b/c", "tree/.hidden", "tree/no\xFFtext/a", "outside/kept"})
        scratch.put(name);
    fs::create_directory(scratch.path / "tree/empty");
    fs::create_directory_symlink(scratch.path / "outside", scratch.path / "tree/link");
    EXPECT_TRUE(RemoveDir(scratch.name("tree")));
    EXPECT_FALSE(scratch.has("tree"));
    EXPECT_TRUE(scratch.has("outside/kept"));
    EXPECT_TRUE(RemoveDir(scratch.name("missing")));
    EXPECT_TRUE(RemoveDir(""));
}

TEST(Copying, ReplacesTheTarget)
{
    const ScratchFolder scratch;
    const std::string binary("a\r\n\0b", 5);
    scratch.put("source", binary);
    scratch.put("empty", "");
    scratch.put("target", "something much longer than the source");
    EXPECT_TRUE(StatCopyFile((scratch.path / "target").string(), scratch.name("source")));
    EXPECT_EQ(scratch.read("target"), binary);
    EXPECT_TRUE(StatCopyFile(scratch.name("target"), scratch.name("empty")));
    EXPECT_EQ(scratch.read("target"), "");
    fs::create_hard_link(scratch.path / "source", scratch.path / "twin");
    EXPECT_TRUE(StatCopyFile(scratch.name("twin"), scratch.name("source")));
    EXPECT_TRUE(StatCopyFile(scratch.name("source"), scratch.name("source")));
    EXPECT_EQ(scratch.read("source"), binary);
    EXPECT_FALSE(StatCopyFile(scratch.name("other"), scratch.name("missing")));
    EXPECT_FALSE(scratch.has("other"));
    EXPECT_FALSE(StatCopyFile(scratch.name("no\\dir"), scratch.name("source")));
}

TEST(FileFacts, TellFileDirectoryAndNothingApart)
{
    const ScratchFolder scratch;
    scratch.put("file.txt");
    scratch.put("fixed.txt");
    fs::create_directory(scratch.path / "fixed");
    for (const char* name : {"fixed.txt", "fixed"})
        fs::permissions(scratch.path / name, fs::perms::owner_read | fs::perms::owner_exec);
    const std::tuple<std::string, bool, bool, bool, bool> rows[] = {
        {scratch.name("file.txt"), true, true, false, false},
        {scratch.name("fixed.txt"), true, true, false, true},
        {scratch.name("missing.txt"), true, false, false, false},
        {scratch.folder, true, true, true, false},
        {scratch.name("fixed"), true, true, true, true},
        {"", false, false, false, false}};
    for (const auto& [path, valid, exists, directory, readOnly] : rows) {
        const FileSpecific file(path);
        EXPECT_EQ(file.IsValid(), valid) << path;
        EXPECT_EQ(file.Exists(), exists) << path;
        EXPECT_EQ(file.IsDir(), directory) << path;
        EXPECT_EQ(file.ReadOnly(), readOnly) << path;
        EXPECT_FALSE(file.IsInUse() || file.IsLocked()) << path;
        EXPECT_EQ(file.ExpandPath(), path);
    }
    const FileSpecific file((scratch.path / "file.txt").string());
    EXPECT_EQ(file.ExpandPath(), scratch.name("file.txt"));
    EXPECT_EQ(file.Name(), "file.txt");
    EXPECT_EQ(file.Path(), scratch.name(""));
}

TEST(Listing, GivesEachMatchingEntryOnce)
{
    const ScratchFolder scratch;
    for (const char* name : {"a.sav", "b.csv", "sub/c.sav", "\xFF/d"})
        scratch.put(name);
    DirectorySpecific directory(scratch.path.string() + "//");
    EXPECT_EQ(directory.ExpandPath(), scratch.name(""));
    using Entries = std::set<std::pair<std::string, bool>>;
    const auto list = [&directory](bool found) {
        Entries entries;
        for (; found; found = directory.Next()) {
            std::string name;
            bool isDirectory = false;
            directory.GetFileSpec(name, isDirectory);
            EXPECT_TRUE(entries.emplace(name, isDirectory).second) << name;
        }
        return entries;
    };
    EXPECT_EQ(list(directory.BrowseFile()),
              (Entries{{"a.sav", false}, {"b.csv", false}, {"sub", true}, {"\xFF", true}}));
    EXPECT_EQ(list(directory.BrowseFile("*.sav")), (Entries{{"a.sav", false}}));
    EXPECT_FALSE(directory.Next());
}

TEST(Listing, OfNothingHasNothingToReport)
{
    const ScratchFolder scratch;
    for (const std::string& path : {scratch.folder, scratch.name("missing"), std::string()}) {
        DirectorySpecific directory(path);
        std::string name = "earlier";
        bool isDirectory = true;
        EXPECT_FALSE(directory.Next());
        EXPECT_FALSE(directory.BrowseFile());
        directory.GetFileSpec(name, isDirectory);
        EXPECT_EQ(name, "earlier");
        EXPECT_TRUE(isDirectory);
    }
}

TEST(ScratchFile, TemporaryOneIsThereAtOnceAndGoes)
{
    fs::path path;
    {
        const HVSimpleFile file("scratch.txt", false, true);
        const HVSimpleFile second("scratch.txt", false, true);
        path = nativeOf(file.GetAbsolutePath());
        EXPECT_EQ(fs::file_size(path), 0U);
        EXPECT_EQ(file.GetAbsolutePath(), GetVexaTempPath() + file.GetFileName());
        EXPECT_EQ(second.GetFileName(), "scratch_1.txt");
    }
    EXPECT_FALSE(fs::exists(path));
    {
        const HVSimpleFile kept("scratch.txt", false, false);
    }
    EXPECT_TRUE(fs::remove(path));
}

TEST(ScratchFile, ItsPathsAreInTheHostsEncodingAndInUtf8)
{
    const ScopedCodePage page("windows-1252");
    const HVSimpleFile file("gr\xfcn.txt", false, true);
    EXPECT_EQ(file.GetAbsolutePath(), GetVexaTempPath() + "gr\xfcn.txt");
    EXPECT_EQ(file.GetGenericPath(), GetVexaTempPath() + "gr\xc3\xbcn.txt");
    EXPECT_EQ(HVSimpleFile::GetAnalyticRootUTF(), HVSimpleFile::GetAnalyticRoot());
    EXPECT_EQ(HVSimpleFile::GetAnalyticDefaultDirUTF(), HVSimpleFile::GetAnalyticDefaultDir());
}

TEST(ScratchFile, AnalyticOneIsTheEnginesToWrite)
{
    const std::string directory = HVSimpleFile::GetAnalyticDefaultDir();
    EXPECT_EQ(HVSimpleFile::GetAnalyticRoot(), GetVexaTempPath() + "analytic-root\\");
    EXPECT_EQ(directory, HVSimpleFile::GetAnalyticRoot() + "zor\\public\\");
    fs::create_directories(nativeOf(directory));
    for (const bool asDirectory : {false, true}) {
        fs::path path;
        {
            const HVSimpleFile file("result.hvbf", true, true);
            EXPECT_EQ(file.GetAbsolutePath(), directory + "result.hvbf");
            path = nativeOf(file.GetAbsolutePath());
            EXPECT_FALSE(fs::exists(path));
            if (asDirectory)
                fs::create_directories(path / "in/it");
            std::ofstream(asDirectory ? path / "in/it/part" : path) << "x";
            EXPECT_TRUE(fs::exists(path));
        }
        EXPECT_FALSE(fs::exists(path)) << asDirectory;
    }
    fs::remove_all(nativeOf(HVSimpleFile::GetAnalyticRoot()));
}

TEST(ScratchFile, LastCopyRemovesIt)
{
    auto first = std::make_unique<HVSimpleFile>("copied.txt", false, true);
    HVSimpleFile other("other.txt", false, true);
    const fs::path otherPath = nativeOf(other.GetAbsolutePath());
    const fs::path path = nativeOf(first->GetAbsolutePath());
    other = *first;
    EXPECT_FALSE(fs::exists(otherPath));
    first.reset();
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(nativeOf(other.GetAbsolutePath()), path);
    other = HVSimpleFile("third.txt", false, true);
    EXPECT_FALSE(fs::exists(path));
}

} // namespace
