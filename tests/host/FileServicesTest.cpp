#include "FileServices.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <tuple>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "CFAppHost.h"
#include "ExtNameStr.h"
#include "files/NameMask.h"
#include "host/ChildProcess.h"
#include "support/HostScopes.h"
#include "support/ScratchFolder.h"

namespace {

std::string expanded(const std::string& name)
{
    char buffer[4096] = "";
    return ExpandFileSpecification(name, buffer, sizeof(buffer)) == 0 ? buffer : "(none)";
}

std::string list(const std::string& directory, const std::string& mask)
{
    DirectoryListing listing(directory, mask);
    std::string all;
    for (std::string name; listing.Next(name);)
        all += name + "|";
    return all;
}

FileKind kindOf(const std::string& name)
{
    return FileAttributesOf(ExtNameStr(name).GetU16());
}

FileState stateOf(const std::string& name)
{
    FileState state;
    EXPECT_EQ(ValidateFileSpecificationEx(name, state), 0) << name;
    return state;
}

/// Whether a lock on the open file would meet one of another process.
bool isLockedElsewhere(int file)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    return ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
}

} // namespace

TEST(ExtName, ANameHasAllItsForms)
{
    const ExtNameStr name("C:\\daten\\größe 🐧.sav");
    EXPECT_EQ(name.GetNative(), "C:/daten/größe 🐧.sav");
    EXPECT_EQ(name.GetU8(), "C:\\daten\\größe 🐧.sav");
    EXPECT_EQ(name.GetU16(), u"C:\\daten\\größe 🐧.sav");

    const ScopedCodePage page("Shift_JIS");
    ExtNameStr japanese("C:\\\x95\x5C.sav");
    EXPECT_EQ(japanese.GetNative(), "C:/表.sav");
    japanese.SetU8("ソ\\x");
    EXPECT_EQ(japanese.GetGeneric(), "\x83\x5C\\x");
}

TEST(ExtName, ANulInANameOpensNothing)
{
    const ScratchFolder scratch;
    scratch.put("a");
    const ExtNameStr name(scratch.name(std::string("a\0.txt", 6)));
    EXPECT_EQ(ExtNameStr::fopen(name, "r"), nullptr);
    EXPECT_EQ(ExtNameStr::remove(name), -1);
    EXPECT_EQ(ExtNameStr::mkdir(ExtNameStr("")), -1);
    std::ifstream stream;
    ExtNameStr::Open(stream, name, std::ios::in);
    EXPECT_TRUE(stream.fail());
    EXPECT_TRUE(scratch.has("a"));
    std::fstream whole;
    ExtNameStr::Open(whole, ExtNameStr(scratch.name("a")), std::ios::in);
    EXPECT_TRUE(whole.is_open());
}

TEST(ExtName, RenamingTakesThePlaceOfAFile)
{
    const ScratchFolder scratch;
    scratch.put("a", "new");
    scratch.put("b", "old");
    const ExtNameStr target(scratch.name("b"));
    EXPECT_EQ(ExtNameStr::rename(ExtNameStr(scratch.name("a")), target), 0);
    EXPECT_EQ(scratch.read("b"), "new");
    EXPECT_EQ(ExtNameStr::rename(ExtNameStr(scratch.name("a")), target), -1);
    EXPECT_EQ(ExtNameStr::rename(target, ExtNameStr("")), -1);
    EXPECT_FALSE(scratch.has("a"));
}

TEST(FileServices, LinksAreResolved)
{
    const ScratchFolder scratch;
    scratch.put("real/file");
    std::filesystem::create_directory_symlink("real", scratch.path / "link");
    std::string whole;
    ASSERT_EQ(ResolveFileSpecification(scratch.name("real/file"), whole), 0);
    std::string resolved;
    EXPECT_EQ(ResolveFileSpecification(scratch.name("link\\.\\file"), resolved), 0);
    EXPECT_EQ(resolved, whole);
    for (const std::string& name : {scratch.name("link\\missing"), std::string()}) {
        EXPECT_NE(ResolveFileSpecification(name, resolved), 0);
        EXPECT_EQ(resolved, "");
    }
}

TEST(FileServices, NamesBecomeAbsoluteAndTidy)
{
    std::string here = std::filesystem::current_path().string();
    std::replace(here.begin(), here.end(), '/', '\\');
    const std::pair<std::string, std::string> cases[] = {
        {"\\a\\.\\b\\..\\c", "\\a\\c"},
        {"/a//b/", "\\a\\b"},
        {"\\..\\..\\x", "\\x"},
        {"\\", "\\"},
        {"x\\y", here + "\\x\\y"},
        {".", here},
        {"C:\\data\\..\\..\\a.sav", "C:\\a.sav"},
        {"c:/x/", "c:\\x"},
        {"1:\\x", here + "\\1:\\x"},
        {"", "(none)"},
        {std::string("a\0b", 3), "(none)"},
    };
    for (const auto& [name, tidy] : cases)
        EXPECT_EQ(expanded(name), tidy) << name;

    char small[5] = "keep";
    EXPECT_NE(ExpandFileSpecification("\\abcd", small, sizeof(small)), 0);
    EXPECT_STREQ(small, "keep");
    EXPECT_EQ(ExpandFileSpecification("\\abc", small, sizeof(small)), 0);
    EXPECT_STREQ(small, "\\abc");
}

TEST(FileServices, NamesAreToldByTheirKind)
{
    const ScratchFolder scratch;
    scratch.put("file");
    EXPECT_EQ(FileAttributesOf(ExtNameStr(scratch.folder).GetU16()), FileKind::Directory);
    EXPECT_EQ(FileAttributesOf(ExtNameStr(scratch.name("file")).GetU16()), FileKind::File);
    EXPECT_EQ(FileAttributesOf(u"\\no\\such"), FileKind::None);
    EXPECT_EQ(FileAttributesOf(u"\\dev\\null"), FileKind::Special);
}

TEST(FileServices, AFileTellsItsState)
{
    const ScratchFolder scratch;
    scratch.put("file");
    scratch.put("fixed");
    ASSERT_EQ(::chmod((scratch.path / "fixed").c_str(), 0444), 0);
    const std::tuple<std::string, bool, bool, bool> rows[] = {
        {"file", true, true, false},
        {"fixed", true, true, true},
        {".", true, true, false},
        {"new", false, true, false},
        {"file\\below", false, false, false},
        {std::string(300, 'n'), false, false, false},
    };
    for (const auto& [name, exists, valid, readOnly] : rows) {
        const FileState state = stateOf(scratch.name(name));
        EXPECT_EQ(state.exists, exists) << name;
        EXPECT_EQ(state.valid, valid) << name;
        EXPECT_EQ(state.readOnly, readOnly) << name;
        EXPECT_FALSE(state.inUse || state.locked) << name;
    }
    bool exists = true;
    EXPECT_NE(ValidateFileSpecification("", exists), 0);
    EXPECT_FALSE(exists);
}

TEST(FileServices, ALockedFileIsInUseForOthersAndStaysLocked)
{
    const ScratchFolder scratch;
    scratch.put("database");
    const std::string name = scratch.name("database");
    const int file = ::open((scratch.path / "database").c_str(), O_RDWR);
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(::fcntl(file, F_SETLK, &lock), 0);
    // To close any descriptor of the file would drop the lock.
    EXPECT_FALSE(stateOf(name).inUse);
    EXPECT_TRUE(holdsInChild([file] { return isLockedElsewhere(file); })) << "the lock is gone";
    EXPECT_TRUE(holdsInChild([&name] { return stateOf(name).inUse; }));
    EXPECT_TRUE(holdsInChild([&name, file] {
        ::close(file);
        return stateOf(name).inUse && !stateOf(name).locked;
    }));
    ::close(file);
}

TEST(FileServices, TemporaryNamesAreFreeAndNeverTheSame)
{
    std::set<std::string> names;
    for (int i = 0; i < 100; ++i)
        names.insert(FormTempName("hvcontfile_"));
    EXPECT_EQ(names.size(), 100U);
    for (const std::string& name : names)
        EXPECT_TRUE(name.starts_with(GetVexaTempPath() + "hvcontfile_") &&
                    kindOf(name) == FileKind::None)
            << name;
}

TEST(FileServices, ATemporaryDirectoryThatIsNoneStopsNobody)
{
    const ScratchFolder scratch;
    scratch.put("file");
    {
        const ScopedEnvironment temp("VEXA_TEMP", (scratch.path / "file").string());
        CFAppHost::update();
        EXPECT_TRUE(FormTempName("n").starts_with(scratch.name("file\\n")));
        EXPECT_EQ(CreateTempFolder("n"), "");
    }
    CFAppHost::update();
}

TEST(FileServices, TemporaryFoldersAreForTheirOwnerAndGoWithTheirContents)
{
    const std::string folder = CreateTempFolder("map");
    const std::filesystem::path path = ExtNameStr(folder).GetNative();
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms::owner_all);
    std::filesystem::create_directories(path / "deep/er");
    std::ofstream(path / "deep/file") << "x";
    EXPECT_TRUE(RemoveFolderFromTempDir(folder + "\\"));
    EXPECT_EQ(kindOf(folder), FileKind::None);
    EXPECT_FALSE(RemoveFolderFromTempDir(folder));
}

TEST(FileServices, NothingOutsideTheTemporaryDirectoryIsRemoved)
{
    const ScratchFolder scratch;
    const ScratchFolder other;
    std::filesystem::create_directory_symlink(other.path, scratch.path / "link");
    {
        const ScopedEnvironment temp("VEXA_TEMP", scratch.path.string());
        CFAppHost::update();
        for (const std::string& name :
             {other.folder, scratch.folder, GetVexaTempPath() + "..", scratch.name("x\\..\\.."),
              scratch.name("..\\" + other.path.filename().string()), scratch.name("link"),
              std::string()})
            EXPECT_FALSE(RemoveFolderFromTempDir(name)) << name;
    }
    CFAppHost::update();
    EXPECT_EQ(kindOf(other.folder), FileKind::Directory);
}

TEST(FileServices, AListingHoldsWhatMatchesAndStandsStillWhileEntriesGo)
{
    const ScratchFolder scratch;
    // No host name spells the last one.
    for (const char* name : {"b.sav", "a.sav", ".hidden", "ä.csv", "[x].csv", "back\\slash"})
        scratch.put(name);
    EXPECT_EQ(list(scratch.folder, "*"), ".hidden|[x].csv|a.sav|b.sav|ä.csv|");
    EXPECT_EQ(list(scratch.folder, "?.csv"), "ä.csv|");
    EXPECT_EQ(list(scratch.folder + "\\", "[x]*"), "[x].csv|");
    EXPECT_EQ(list(scratch.name("none"), "*"), "");

    DirectoryListing listing(scratch.folder, "*.sav");
    std::string name;
    int removed = 0;
    while (listing.Next(name))
        removed += ExtNameStr::remove(ExtNameStr(scratch.name(name))) == 0;
    EXPECT_EQ(removed, 2);
    EXPECT_FALSE(listing.Next(name));
}

TEST(FileServices, MasksMatchByTheWholeName)
{
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"*", "", true},           {"", "", true},        {"?", "", false},
        {"a*b*c", "aXbbYc", true}, {"**", "x", true},     {"a*b*c", "aXbbYd", false},
        {"*ab", "aab", true},      {"??", "é", false},    {"*.sav", "x.sav.bak", false},
        {"?", "🐧", true},          {"*é", "caféé", true}, {"A", "a", false},
    };
    for (const auto& [mask, name, matches] : rows)
        EXPECT_EQ(matchesMask(name, mask), matches) << mask << " " << name;
}

TEST(FileServices, AWholeFileIsFetched)
{
    const ScratchFolder scratch;
    const std::string text(200000, '\0');
    scratch.put("big", text);
    std::string content;
    EXPECT_TRUE(FetchFile::fetch(scratch.name("big"), content));
    EXPECT_EQ(content, text);
    for (const std::string& name : {scratch.name("none"), scratch.folder}) {
        content = "left over";
        EXPECT_FALSE(FetchFile::fetch(name, content));
        EXPECT_EQ(content, "");
    }
}
