#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include "MultiByte.h"
#include "support/ScratchFolder.h"
#include "support/ZipReader.h"
#include "support/ZipWriter.h"

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::pair<std::string, bool>>;

Names walk(const std::string& archive)
{
    ZipReader reader(archive);
    Names names;
    std::string name;
    bool isDirectory = false;
    for (bool found = reader.GetFirst(name, isDirectory); found;
         found = reader.GetNext(name, isDirectory))
        names.emplace_back(name, isDirectory);
    return names;
}

// Does not compress, so that it takes many chunks on the way out too.
std::string noise(std::size_t size)
{
    std::string text(size, '\0');
    unsigned state = 1;
    for (char& character : text)
        character = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24);
    return text;
}

TEST(Zip, PacksATreeAndUnpacksIt)
{
    const ScratchFolder scratch;
    const std::pair<const char*, std::string> files[] = {{"tree/empty.txt", ""},
                                                         {"tree/chunk", noise(8192)},
                                                         {"tree/deep/er/big", noise(300001)},
                                                         {"tree/deep/größe 🐧.csv", "a;b\r\n"},
                                                         {"tree/bad\xff", "no UTF-8"},
                                                         {"tree/zeros", std::string(100000, '\0')}};
    for (const auto& [name, content] : files)
        scratch.put(name, content);
    fs::create_directories(scratch.path / "tree/hollow");
    fs::create_symlink(scratch.path / "tree/chunk", scratch.path / "tree/link");
    // The archive stands in the tree and must not eat itself.
    ASSERT_TRUE(ZipDir(scratch.folder + "\\tree\\self.zip", scratch.folder + "\\tree"));
    EXPECT_EQ(walk(scratch.folder + "\\tree\\self.zip"), (Names{{"bad\xff", false},
                                                                {"chunk", false},
                                                                {"deep\\", true},
                                                                {"deep\\er\\", true},
                                                                {"deep\\er\\big", false},
                                                                {"deep\\größe 🐧.csv", false},
                                                                {"empty.txt", false},
                                                                {"hollow\\", true},
                                                                {"link", false},
                                                                {"zeros", false}}));
    ASSERT_TRUE(UnzipToDir(scratch.folder + "\\tree\\self.zip", scratch.folder + "\\out"));
    for (const auto& [name, content] : files)
        EXPECT_EQ(scratch.read("out" + std::string(name).substr(4)), content) << name;
    EXPECT_TRUE(fs::is_directory(scratch.path / "out/hollow"));
    EXPECT_EQ(scratch.read("out/link"), noise(8192));
}

TEST(Zip, NamesAreStoredWithBackslashesAndFoundWithEither)
{
    const ScratchFolder scratch;
    const std::string archive = scratch.folder + "\\a.zip";
    scratch.put("file", "from disk");
    {
        ZipWriter writer(archive);
        std::istringstream stream("from a stream");
        EXPECT_TRUE(writer.AddDirectoryName("plain"));
        EXPECT_TRUE(writer.AddDirectoryName("slash/"));
        EXPECT_TRUE(writer.AddDirectoryName("back\\"));
        EXPECT_TRUE(writer.AddStream("slash/a/b", stream));
        EXPECT_TRUE(writer.AddFile("disk", (scratch.path / "file").string()));
        EXPECT_TRUE(writer.AddString("empty", ""));
        EXPECT_FALSE(writer.AddString(std::string("a\0b", 3), "another's name"));
        EXPECT_TRUE(writer.AddString("Twice", "first"));
        EXPECT_TRUE(writer.AddString("Twice", "second"));
    }
    EXPECT_EQ(walk(archive), (Names{{"plain\\", true},
                                    {"slash\\", true},
                                    {"back\\", true},
                                    {"slash\\a\\b", false},
                                    {"disk", false},
                                    {"empty", false},
                                    {"Twice", false},
                                    {"Twice", false}}));
    const std::pair<const char*, const char*> rows[] = {{"slash/a/b", "from a stream"},
                                                        {"slash\\a\\b", "from a stream"},
                                                        {"empty", ""},
                                                        {"disk", "from disk"},
                                                        {"Twice", "first"}};
    ZipReader reader(archive);
    for (const auto& [name, content] : rows) {
        std::string text = "replaced";
        EXPECT_TRUE(reader.GotoFile(name) && reader.ExportString(text)) << name;
        EXPECT_EQ(text, content) << name;
    }
    EXPECT_FALSE(reader.GotoFile("twice"));
}

// After a failure of the archive, be it the end of the walk or a name that is not there.
void expectFailed(ZipReader& reader, const ScratchFolder& scratch)
{
    std::string name = "as before";
    bool isDirectory = true;
    std::ostringstream stream;
    EXPECT_FALSE(reader.GetFirst(name, isDirectory));
    EXPECT_FALSE(reader.GetNext(name, isDirectory));
    EXPECT_FALSE(reader.GotoFile("a"));
    EXPECT_FALSE(reader.ExportFile(scratch.folder + "\\copy"));
    EXPECT_FALSE(reader.ExportStream(stream));
    EXPECT_FALSE(reader.ExportString(name));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(scratch.has("copy"));
    EXPECT_TRUE(reader.ExportFullDirectory(scratch.folder + "\\nothing"));
    EXPECT_TRUE(fs::is_empty(scratch.path / "nothing"));
    fs::remove(scratch.path / "nothing");
}

TEST(Zip, AFailureOfTheArchiveIsFinal)
{
    const ScratchFolder scratch;
    const std::string archive = scratch.folder + "\\a.zip";
    ASSERT_TRUE(ZipWriter(archive).AddString("a", "content"));
    std::string name;
    bool isDirectory = false;
    {
        ZipReader reader(archive);
        EXPECT_TRUE(reader.GetFirst(name, isDirectory));
        EXPECT_FALSE(reader.GetNext(name, isDirectory));
        EXPECT_EQ(name, "a");
        expectFailed(reader, scratch);
        EXPECT_TRUE(reader.IsOpen());
    }
    {
        ZipReader reader(archive);
        EXPECT_FALSE(reader.GotoFile("b"));
        expectFailed(reader, scratch);
    }
    ZipReader closed;
    expectFailed(closed, scratch);
    EXPECT_FALSE(closed.Open(scratch.folder + "\\missing.zip"));
    EXPECT_FALSE(closed.Open(archive + std::string("\0", 1)));
    EXPECT_FALSE(closed.IsOpen());
    EXPECT_TRUE(closed.Open(archive));
    EXPECT_TRUE(closed.ExportString(name));
    EXPECT_EQ(name, "content");
}

TEST(Zip, AWriterIsNotHarmedByAFileThatItCannotRead)
{
    const ScratchFolder scratch;
    const std::string archive = scratch.folder + "\\a.zip";
    fs::create_directories(scratch.path / "dir");
    ASSERT_EQ(::mkfifo((scratch.path / "pipe").c_str(), 0600), 0);
    ZipWriter closed;
    EXPECT_FALSE(closed.IsOpen() || closed.AddString("a", "a") || closed.AddDirectoryName("d") ||
                 closed.AddFullDirectory(scratch.folder + "\\missing"));
    EXPECT_FALSE(closed.Open(scratch.folder + "\\no\\dir.zip"));
    ZipWriter* const writer = &closed;
    EXPECT_TRUE(writer->Open(archive));
    for (const char* name : {"missing", "dir", "pipe", "a.zip", ""})
        EXPECT_FALSE(writer->AddFile("entry", scratch.folder + "\\" + name)) << name;
    EXPECT_TRUE(writer->AddString("after", "all is well"));
}

TEST(Zip, OpeningCreatesAnewAndOnlyOnce)
{
    const ScratchFolder scratch;
    ASSERT_TRUE(ZipWriter(scratch.folder + "\\first.zip").AddString("old", noise(5000)));
    ASSERT_TRUE(ZipWriter(scratch.folder + "\\second.zip").AddString("other", ""));
    {
        ZipWriter writer(scratch.folder + "\\first.zip");
        EXPECT_TRUE(writer.Open(scratch.folder + "\\third.zip"));
        EXPECT_TRUE(writer.AddString("new", ""));
    }
    EXPECT_FALSE(scratch.has("third.zip"));
    EXPECT_EQ(walk(scratch.folder + "\\first.zip"), (Names{{"new", false}}));
    ZipReader reader(scratch.folder + "\\first.zip");
    EXPECT_TRUE(reader.Open(scratch.folder + "\\second.zip"));
    EXPECT_TRUE(reader.GotoFile("new"));
}

TEST(Zip, AMissingDirectoryMakesAnEmptyArchive)
{
    const ScratchFolder scratch;
    ASSERT_TRUE(ZipDir(scratch.folder + "\\empty.zip", scratch.folder + "\\missing"));
    EXPECT_TRUE(ZipReader(scratch.folder + "\\empty.zip").IsOpen());
    EXPECT_EQ(walk(scratch.folder + "\\empty.zip"), Names());
    EXPECT_TRUE(UnzipToDir(scratch.folder + "\\empty.zip", scratch.folder + "\\out"));
    EXPECT_TRUE(fs::is_empty(scratch.path / "out"));
}

TEST(Zip, ALinkThatLeadsBackUpIsAFailure)
{
    const ScratchFolder scratch;
    scratch.put("tree/a/file");
    for (const char* name : {"tree/a/up", "tree/a/up too"})
        fs::create_directory_symlink(scratch.path / "tree", scratch.path / name);
    EXPECT_FALSE(ZipDir(scratch.folder + "\\a.zip", scratch.folder + "\\tree"));
    // It is not entered even once.
    EXPECT_EQ(walk(scratch.folder + "\\a.zip"),
              (Names{{"a\\", true}, {"a\\file", false}, {"a\\up\\", true}}));
}

TEST(Zip, UnpacksOneLevelDeepIntoWhatMayBeWritten)
{
    const ScratchFolder scratch;
    const std::string archive = scratch.folder + "\\a.zip";
    ASSERT_TRUE(ZipWriter(archive).AddString("a", "new"));
    EXPECT_TRUE(UnzipToDir(archive, scratch.folder + "\\one"));
    EXPECT_FALSE(UnzipToDir(archive, scratch.folder + "\\two\\levels"));
    EXPECT_FALSE(scratch.has("two"));
    scratch.put("there/a", "old and longer");
    scratch.put("there/b", "stays");
    EXPECT_TRUE(UnzipToDir(archive, scratch.folder + "\\there\\"));
    EXPECT_EQ(scratch.read("there/a"), "new");
    EXPECT_EQ(scratch.read("there/b"), "stays");
    fs::create_directories(scratch.path / "fixed");
    fs::permissions(scratch.path / "fixed", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(UnzipToDir(archive, scratch.folder + "\\fixed"));
    EXPECT_FALSE(scratch.has("fixed/a"));
    scratch.put("text.zip", "no archive");
    EXPECT_FALSE(UnzipToDir(scratch.folder + "\\text.zip", scratch.folder + "\\three"));
    EXPECT_FALSE(UnzipToDir(scratch.folder + "\\one", scratch.folder + "\\three"));
    EXPECT_FALSE(scratch.has("three"));
}

TEST(Zip, AFileIsReplacedOnlyWhereThatDoesNoHarm)
{
    const ScratchFolder scratch;
    ASSERT_TRUE(ZipWriter(scratch.folder + "\\a.zip").AddString("a", "new"));
    scratch.put("fixed", "old");
    fs::permissions(scratch.path / "fixed", fs::perms::owner_read);
    fs::create_directories(scratch.path / "dir");
    ASSERT_EQ(::mkfifo((scratch.path / "pipe").c_str(), 0600), 0);
    ZipReader reader(scratch.folder + "\\a.zip");
    for (const char* name : {"fixed", "dir", "pipe", "dir\\", "no\\dir", ""})
        EXPECT_FALSE(reader.ExportFile(scratch.folder + "\\" + name)) << name;
    EXPECT_EQ(scratch.read("fixed"), "old");
    EXPECT_TRUE(fs::is_fifo(scratch.path / "pipe"));
    // A name of a file that was left by a program that died.
    scratch.put("~unfinished0", "somebody's");
    const std::string longest(255, 'n');
    EXPECT_TRUE(reader.ExportFile(scratch.path.string() + "/" + longest));
    EXPECT_EQ(scratch.read(longest), "new");
    EXPECT_EQ(scratch.read("~unfinished0"), "somebody's");
    EXPECT_FALSE(scratch.has("~unfinished1"));
}

TEST(Zip, ALongNameIsCut)
{
    const ScratchFolder scratch;
    const std::string archive = scratch.folder + "\\a.zip";
    {
        ZipWriter writer(archive);
        for (const std::size_t length : {259U, 260U, 261U, 5000U})
            EXPECT_TRUE(writer.AddString(std::string(length, 'n'), "x"));
        EXPECT_TRUE(writer.AddDirectoryName(std::string(400, 'd')));
    }
    const std::string cut(259, 'n');
    EXPECT_EQ(walk(archive), (Names{{cut, false},
                                    {cut, false},
                                    {cut, false},
                                    {cut, false},
                                    {std::string(259, 'd'), false}}));
    ZipWriter writer(scratch.folder + "\\b.zip");
    EXPECT_FALSE(writer.AddString(std::string(70000, 'n'), "longer than its length can say"));
}

TEST(Zip, PathsAndNamesAreInTheHostsEncoding)
{
    const ScratchFolder scratch;
    const std::string before = VEXAMBDefaultCodePage();
    ASSERT_TRUE(SetDefaultCodePage("Shift_JIS"));
    // The second byte of this letter is that of a backslash.
    const std::string letter = "\x95\x5c";
    scratch.put("tree/表", "table");
    EXPECT_TRUE(ZipDir(scratch.folder + "\\" + letter + ".zip", scratch.folder + "\\tree"));
    EXPECT_TRUE(scratch.has("表.zip"));
    EXPECT_EQ(walk(scratch.folder + "\\" + letter + ".zip"), (Names{{letter, false}}));
    EXPECT_TRUE(UnzipToDir(scratch.folder + "\\" + letter + ".zip", scratch.folder + "\\out"));
    EXPECT_EQ(scratch.read("out/表"), "table");
    ASSERT_TRUE(SetDefaultCodePage(before));
}

TEST(Zip, AStreamThatBreaksIsAFailure)
{
    const ScratchFolder scratch;
    {
        ZipWriter writer(scratch.folder + "\\a.zip");
        ASSERT_TRUE(writer.AddString("a", noise(20000)) && writer.AddString("b", "one chunk"));
    }
    ZipReader reader(scratch.folder + "\\a.zip");
    std::ofstream full("/dev/full", std::ios::binary);
    EXPECT_FALSE(reader.ExportStream(full));
    EXPECT_FALSE(reader.GotoFile("b") && reader.ExportStream(full));
    std::string text;
    EXPECT_TRUE(reader.ExportString(text));

    /// Gives some bytes, then an error.
    class Breaking : public std::streambuf
    {
        int_type underflow() override
        {
            if (_given)
                throw std::runtime_error("disk");
            _given = true;
            setg(_text, _text, _text + sizeof(_text));
            return _text[0];
        }
        char _text[3] = {'a', 'b', 'c'};
        bool _given = false;
    } breaking;
    std::istream broken(&breaking);
    ZipWriter writer(scratch.folder + "\\b.zip");
    EXPECT_FALSE(writer.AddStream("a", broken));
    EXPECT_TRUE(writer.AddString("b", "still open"));
}

} // namespace
