#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "HostScopes.h"
#include "files/NameMask.h"

namespace {

std::string native(const std::string& name)
{
    return ExtNameStr(name).GetNative();
}

void writeFile(const std::string& name, const std::string& text)
{
    std::ofstream file;
    ExtNameStr::Open(file, ExtNameStr(name), std::ios::binary);
    file << text;
    ASSERT_TRUE(file.flush()) << name;
}

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

// Locks a file in another process while `during` runs.
template <typename During>
void whileLockedElsewhere(const std::string& name, During during)
{
    int ready[2] = {};
    ASSERT_EQ(::pipe(ready), 0);
    const std::string path = native(name);
    const pid_t child = ::fork();
    if (child == 0) {
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        const int file = ::open(path.c_str(), O_RDWR);
        const bool locked = ::fcntl(file, F_SETLK, &lock) == 0;
        if (::write(ready[1], locked ? "y" : "n", 1) == 1)
            ::pause();
        ::_exit(1);
    }
    char answer = 0;
    EXPECT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    during();
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
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

TEST(ExtName, BytesThatAreNoUtf8StillNameTheirFile)
{
    const ScopedFolder folder;
    const std::string name = folder.name("bad\xFFname");
    writeFile(name, "x");
    EXPECT_EQ(list(folder.path, "*"), "bad\xFFname|");
    std::string text;
    EXPECT_TRUE(FetchFile::fetch(name, text));
    EXPECT_EQ(ExtNameStr::remove(ExtNameStr(name)), 0);
}

TEST(ExtName, ANulInANameOpensNothing)
{
    const ScopedFolder folder;
    writeFile(folder.name("a"), "x");
    const ExtNameStr name(folder.name("a") + std::string("\0.txt", 5));
    EXPECT_EQ(ExtNameStr::fopen(name, "r"), nullptr);
    EXPECT_EQ(ExtNameStr::remove(name), -1);
    EXPECT_EQ(ExtNameStr::mkdir(ExtNameStr("")), -1);
    std::ifstream stream;
    ExtNameStr::Open(stream, name, std::ios::in);
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(list(folder.path, "*"), "a|");
}

TEST(ExtName, RenamingTakesThePlaceOfAFile)
{
    const ScopedFolder folder;
    writeFile(folder.name("a"), "new");
    writeFile(folder.name("b"), "old");
    const ExtNameStr target(folder.name("b"));
    EXPECT_EQ(ExtNameStr::rename(ExtNameStr(folder.name("a")), target), 0);
    std::string text;
    EXPECT_TRUE(FetchFile::fetch(folder.name("b"), text));
    EXPECT_EQ(text, "new");
    EXPECT_EQ(ExtNameStr::rename(ExtNameStr(folder.name("a")), target), -1);
    EXPECT_EQ(ExtNameStr::rename(target, ExtNameStr("")), -1);
    EXPECT_EQ(list(folder.path, "*"), "b|");
}

TEST(FileServices, LinksAreResolved)
{
    const ScopedFolder folder;
    std::filesystem::create_directory(native(folder.name("real")));
    std::filesystem::create_directory_symlink("real", native(folder.name("link")));
    writeFile(folder.name("real\\file"), "x");
    std::string whole;
    ASSERT_EQ(ResolveFileSpecification(folder.name("real/file"), whole), 0);
    std::string resolved;
    EXPECT_EQ(ResolveFileSpecification(folder.name("link\\.\\file"), resolved), 0);
    EXPECT_EQ(resolved, whole);
    for (const std::string& name : {folder.name("link\\missing"), std::string()}) {
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

TEST(FileServices, DirectoriesAreToldFromFiles)
{
    const ScopedFolder folder;
    writeFile(folder.name("file"), "");
    std::string full;
    bool exists = false;
    bool readOnly = true;
    EXPECT_EQ(ValidateDirSpecification(folder.path + "\\", full, exists, readOnly), 0);
    EXPECT_EQ(full, folder.path);
    EXPECT_TRUE(exists);
    EXPECT_FALSE(readOnly);
    ASSERT_EQ(::chmod(native(folder.path).c_str(), 0555), 0);
    ValidateDirSpecification(folder.path, full, exists, readOnly);
    EXPECT_TRUE(readOnly);
    ASSERT_EQ(::chmod(native(folder.path).c_str(), 0700), 0);

    EXPECT_EQ(ValidateDirSpecification(folder.name("file"), full, exists, readOnly), 0);
    EXPECT_FALSE(exists);
    EXPECT_NE(ValidateDirSpecification("", full, exists, readOnly), 0);
    EXPECT_EQ(FileAttributesOf(ExtNameStr(folder.path).GetU16()), FileKind::Directory);
    EXPECT_EQ(FileAttributesOf(ExtNameStr(folder.name("file")).GetU16()), FileKind::File);
    EXPECT_EQ(FileAttributesOf(u"\\no\\such"), FileKind::None);
    EXPECT_EQ(FileAttributesOf(u"\\dev\\null"), FileKind::Special);
}

TEST(FileServices, AFileTellsItsState)
{
    const ScopedFolder folder;
    FileState state;
    EXPECT_EQ(ValidateFileSpecificationEx(folder.name("new"), state), 0);
    EXPECT_FALSE(state.exists);
    EXPECT_TRUE(state.valid);
    EXPECT_EQ(ValidateFileSpecificationEx(folder.name(std::string(300, 'n')), state), 0);
    EXPECT_FALSE(state.valid);

    const std::string name = folder.name("file");
    writeFile(name, "x");
    EXPECT_EQ(ValidateFileSpecificationEx(folder.name("file\\below"), state), 0);
    EXPECT_FALSE(state.valid);
    ValidateFileSpecificationEx(name, state);
    EXPECT_TRUE(state.exists && state.valid);
    EXPECT_FALSE(state.readOnly || state.inUse || state.locked);
    ASSERT_EQ(::chmod(native(name).c_str(), 0444), 0);
    ValidateFileSpecificationEx(name, state);
    EXPECT_TRUE(state.readOnly);
    EXPECT_FALSE(state.locked);
    bool exists = false;
    EXPECT_EQ(ValidateFileSpecification(folder.path, exists), 0);
    EXPECT_TRUE(exists);
    EXPECT_NE(ValidateFileSpecification("", exists), 0);
    EXPECT_FALSE(exists);
}

TEST(FileServices, AFileThatAnotherProcessHoldsIsInUse)
{
    const ScopedFolder folder;
    const std::string name = folder.name("held");
    writeFile(name, "x");
    whileLockedElsewhere(name, [&] {
        FileState state;
        ValidateFileSpecificationEx(name, state);
        EXPECT_TRUE(state.inUse);
        EXPECT_FALSE(state.locked);
    });
}

TEST(FileServices, LookingAtAFileKeepsTheLocksOfThisProcess)
{
    const ScopedFolder folder;
    const std::string name = folder.name("database");
    writeFile(name, "x");
    const int file = ::open(native(name).c_str(), O_RDWR);
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(::fcntl(file, F_SETLK, &lock), 0);
    FileState state;
    ValidateFileSpecificationEx(name, state);
    EXPECT_FALSE(state.inUse);

    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the lock is gone";
    ::close(file);
}

TEST(FileServices, TemporaryNamesAreFreeAndNeverTheSame)
{
    const std::string first = FormTempName("hvcontfile_");
    EXPECT_TRUE(first.starts_with(GetVexaTempPath() + "hvcontfile_"));
    EXPECT_EQ(FileAttributesOf(ExtNameStr(first).GetU16()), FileKind::None);
    std::set<std::string> names;
    for (int i = 0; i < 100; ++i)
        names.insert(FormTempName("n"));
    EXPECT_EQ(names.size(), 100U);
}

TEST(FileServices, TemporaryFoldersAreForTheirOwnerAndGoWithTheirContents)
{
    const std::string folder = CreateTempFolder("map");
    struct stat state = {};
    ASSERT_EQ(::stat(native(folder).c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777U, 0700U);
    std::filesystem::create_directories(native(folder) + "/deep/er");
    writeFile(folder + "\\deep\\file", "x");
    EXPECT_TRUE(RemoveFolderFromTempDir(folder + "\\"));
    EXPECT_EQ(FileAttributesOf(ExtNameStr(folder).GetU16()), FileKind::None);
    EXPECT_FALSE(RemoveFolderFromTempDir(folder));
}

TEST(FileServices, NothingOutsideTheTemporaryDirectoryIsRemoved)
{
    const ScopedFolder folder;
    const ScopedFolder other;
    const ScopedEnvironment temp("VEXA_TEMP", native(folder.path));
    CFAppHost::update();
    std::filesystem::create_directory_symlink(native(other.path), native(folder.name("link")));
    for (const std::string& name :
         {other.path, folder.path, GetVexaTempPath() + "..", folder.name("x\\..\\.."),
          folder.path + "\\..\\" + other.path.substr(other.path.rfind('\\') + 1),
          folder.name("link"), std::string()})
        EXPECT_FALSE(RemoveFolderFromTempDir(name)) << name;
    EXPECT_EQ(FileAttributesOf(ExtNameStr(other.path).GetU16()), FileKind::Directory);
    const ScopedEnvironment back("VEXA_TEMP", std::nullopt);
    CFAppHost::update();
}

TEST(FileServices, AListingHoldsWhatMatchesAndStandsStillWhileEntriesGo)
{
    const ScopedFolder folder;
    for (const char* name : {"b.sav", "a.sav", ".hidden", "ä.csv", "[x].csv"})
        writeFile(folder.name(name), "");
    // No host name spells this one.
    const std::ofstream backslash(native(folder.path) + "/back\\slash");
    EXPECT_EQ(list(folder.path, "*"), ".hidden|[x].csv|a.sav|b.sav|ä.csv|");
    EXPECT_EQ(list(folder.path, "?.csv"), "ä.csv|");
    EXPECT_EQ(list(folder.path + "\\", "[x]*"), "[x].csv|");
    EXPECT_EQ(list(folder.name("none"), "*"), "");

    DirectoryListing listing(folder.path, "*.sav");
    std::string name;
    int removed = 0;
    while (listing.Next(name))
        removed += ExtNameStr::remove(ExtNameStr(folder.name(name))) == 0;
    EXPECT_EQ(removed, 2);
    EXPECT_FALSE(listing.Next(name));
}

TEST(FileServices, MasksMatchByTheWholeName)
{
    struct Case
    {
        const char* mask;
        const char* name;
        bool matches;
    };
    const Case cases[] = {{"*", "", true},
                          {"", "", true},
                          {"?", "", false},
                          {"a*b*c", "aXbbYc", true},
                          {"a*b*c", "aXbbYd", false},
                          {"*.sav", "x.sav.bak", false},
                          {"**", "x", true},
                          {"??", "é", false},
                          {"?", "🐧", true},
                          {"*é", "caféé", true},
                          {"A", "a", false},
                          {"*ab", "aab", true}};
    for (const Case& row : cases)
        EXPECT_EQ(matchesMask(row.name, row.mask), row.matches) << row.mask << " " << row.name;
}

TEST(FileServices, AWholeFileIsFetched)
{
    const ScopedFolder folder;
    const std::string text(200000, '\0');
    writeFile(folder.name("big"), text);
    std::string content = "left over";
    EXPECT_TRUE(FetchFile::fetch(folder.name("big"), content));
    EXPECT_EQ(content, text);
    EXPECT_FALSE(FetchFile::fetch(folder.name("none"), content));
    EXPECT_EQ(content, "");
    content = "left over";
    EXPECT_FALSE(FetchFile::fetch(folder.path, content));
    EXPECT_EQ(content, "");
}
