#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include <sys/stat.h>

#include "support/HostScopes.h"
#include "support/ZipWriter.h"
#include "support_lib/ZipFixture.h"

namespace {

namespace fs = std::filesystem;

using Zip = ZipFixture;
using Names = std::vector<std::string>;

Names walk(const std::string& archive)
{
    ZipReader reader(archive);
    Names names;
    forEachEntry(reader, [&](const std::string& name, bool isDirectory) {
        EXPECT_EQ(isDirectory, name.ends_with('\\')) << name;
        names.push_back(name);
    });
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

TEST_F(Zip, PacksATreeAndUnpacksIt)
{
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
    // The archive is in the tree and must not contain itself.
    const std::string self = scratch.name("tree\\self.zip");
    ASSERT_TRUE(ZipDir(self, scratch.name("tree")));
    EXPECT_EQ(walk(self), (Names{"bad\xff", "chunk", "deep\\", "deep\\er\\", "deep\\er\\big",
                                 "deep\\größe 🐧.csv", "empty.txt", "hollow\\", "link", "zeros"}));
    ASSERT_TRUE(UnzipToDir(self, out));
    for (const auto& [name, content] : files)
        EXPECT_EQ(scratch.read("out" + std::string(name).substr(4)), content) << name;
    EXPECT_TRUE(fs::is_directory(scratch.path / "out/hollow"));
    EXPECT_EQ(scratch.read("out/link"), noise(8192));
}

TEST_F(Zip, NamesAreStoredWithBackslashesAndFoundWithEither)
{
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
    EXPECT_EQ(walk(archive), (Names{"plain\\", "slash\\", "back\\", "slash\\a\\b", "disk", "empty",
                                    "Twice", "Twice"}));
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
    EXPECT_FALSE(reader.ExportFile(scratch.name("copy")));
    EXPECT_FALSE(reader.ExportStream(stream));
    EXPECT_FALSE(reader.ExportString(name));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(scratch.has("copy"));
    EXPECT_TRUE(reader.ExportFullDirectory(scratch.name("nothing")));
    EXPECT_TRUE(fs::is_empty(scratch.path / "nothing"));
    fs::remove(scratch.path / "nothing");
}

TEST_F(Zip, AFailureOfTheArchiveIsFinal)
{
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
    EXPECT_FALSE(closed.Open(scratch.name("missing.zip")));
    EXPECT_FALSE(closed.Open(archive + std::string("\0", 1)));
    EXPECT_FALSE(closed.IsOpen());
    EXPECT_TRUE(closed.Open(archive));
    EXPECT_TRUE(closed.ExportString(name));
    EXPECT_EQ(name, "content");
}

TEST_F(Zip, AWriterIsNotHarmedByAFileThatItCannotRead)
{
    fs::create_directories(scratch.path / "dir");
    ASSERT_EQ(::mkfifo((scratch.path / "pipe").c_str(), 0600), 0);
    ZipWriter writer;
    EXPECT_FALSE(writer.IsOpen() || writer.AddString("a", "a") || writer.AddDirectoryName("d") ||
                 writer.AddFullDirectory(scratch.name("missing")));
    EXPECT_FALSE(writer.Open(scratch.name("no\\dir.zip")));
    EXPECT_TRUE(writer.Open(archive));
    for (const char* name : {"missing", "dir", "pipe", "a.zip", ""})
        EXPECT_FALSE(writer.AddFile("entry", scratch.name("") + name)) << name;
    EXPECT_TRUE(writer.AddString("after", "all is well"));
}

TEST_F(Zip, OpeningCreatesAnewAndOnlyOnce)
{
    ASSERT_TRUE(ZipWriter(scratch.name("first.zip")).AddString("old", noise(5000)));
    ASSERT_TRUE(ZipWriter(scratch.name("second.zip")).AddString("other", ""));
    {
        ZipWriter writer(scratch.name("first.zip"));
        EXPECT_TRUE(writer.Open(scratch.name("third.zip")));
        EXPECT_TRUE(writer.AddString("new", ""));
    }
    EXPECT_FALSE(scratch.has("third.zip"));
    EXPECT_EQ(walk(scratch.name("first.zip")), (Names{"new"}));
    ZipReader reader(scratch.name("first.zip"));
    EXPECT_TRUE(reader.Open(scratch.name("second.zip")));
    EXPECT_TRUE(reader.GotoFile("new"));
}

TEST_F(Zip, AMissingDirectoryMakesAnEmptyArchive)
{
    ASSERT_TRUE(ZipDir(scratch.name("empty.zip"), scratch.name("missing")));
    EXPECT_TRUE(ZipReader(scratch.name("empty.zip")).IsOpen());
    EXPECT_EQ(walk(scratch.name("empty.zip")), Names());
    EXPECT_TRUE(UnzipToDir(scratch.name("empty.zip"), out));
    EXPECT_TRUE(fs::is_empty(scratch.path / "out"));
}

TEST_F(Zip, ALinkThatLeadsBackUpIsAFailure)
{
    scratch.put("tree/a/file");
    for (const char* name : {"tree/a/up", "tree/a/up too"})
        fs::create_directory_symlink(scratch.path / "tree", scratch.path / name);
    EXPECT_FALSE(ZipDir(archive, scratch.name("tree")));
    // It is not entered even once.
    EXPECT_EQ(walk(archive), (Names{"a\\", "a\\file", "a\\up\\"}));
}

TEST_F(Zip, WhatCannotBeUnpackedIsNotPacked)
{
    for (const std::string& name :
         {std::string("a:b"), std::string("a\nb"), std::string("a\\b"), std::string(250, 'x')}) {
        for (const bool isDirectory : {false, true}) {
            const std::string place = "tree/0123456789/" + name;
            scratch.put("tree/0123456789/plain");
            if (isDirectory)
                fs::create_directory(scratch.path / place);
            else
                scratch.put(place);
            EXPECT_FALSE(ZipDir(scratch.name("odd.zip"), scratch.name("tree"))) << name;
            fs::remove_all(scratch.path / "tree");
        }
    }
}

TEST_F(Zip, UnpacksOneLevelDeepIntoWhatMayBeWritten)
{
    ASSERT_TRUE(ZipWriter(archive).AddString("a", "new"));
    EXPECT_TRUE(UnzipToDir(archive, scratch.name("one")));
    EXPECT_FALSE(UnzipToDir(archive, scratch.name("two\\levels")));
    EXPECT_FALSE(scratch.has("two"));
    scratch.put("there/a", "old and longer");
    scratch.put("there/b", "stays");
    EXPECT_TRUE(UnzipToDir(archive, scratch.name("there\\")));
    EXPECT_EQ(scratch.read("there/a"), "new");
    EXPECT_EQ(scratch.read("there/b"), "stays");
    fs::create_directories(scratch.path / "fixed");
    fs::permissions(scratch.path / "fixed", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(UnzipToDir(archive, scratch.name("fixed")));
    EXPECT_FALSE(scratch.has("fixed/a"));
    scratch.put("text.zip", "no archive");
    EXPECT_FALSE(UnzipToDir(scratch.name("text.zip"), scratch.name("three")));
    EXPECT_FALSE(UnzipToDir(scratch.name("one"), scratch.name("three")));
    EXPECT_FALSE(scratch.has("three"));
}

TEST_F(Zip, AFileIsReplacedOnlyWhereThatDoesNoHarm)
{
    ASSERT_TRUE(ZipWriter(archive).AddString("a", "new"));
    scratch.put("fixed", "old");
    fs::permissions(scratch.path / "fixed", fs::perms::owner_read);
    fs::create_directories(scratch.path / "dir");
    ASSERT_EQ(::mkfifo((scratch.path / "pipe").c_str(), 0600), 0);
    ZipReader reader(archive);
    for (const char* name : {"fixed", "dir", "pipe", "dir\\", "no\\dir", ""})
        EXPECT_FALSE(reader.ExportFile(scratch.name("") + name)) << name;
    EXPECT_EQ(scratch.read("fixed"), "old");
    EXPECT_TRUE(fs::is_fifo(scratch.path / "pipe"));
    // What a process left that was killed, and a name that only looks like it.
    scratch.put(".a.hv-1-2-3.part", "half");
    scratch.put(".a.hv-mine.part", "somebody's");
    const std::string longest(255, 'n');
    EXPECT_TRUE(reader.ExportFile(scratch.path.string() + "/" + longest));
    EXPECT_EQ(scratch.read(longest), "new");
    EXPECT_EQ(scratch.read(".a.hv-mine.part"), "somebody's");
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path), {}), 6) << "parts are left";
}

TEST_F(Zip, ALongNameIsCut)
{
    {
        ZipWriter writer(archive);
        for (const std::size_t length : {259U, 260U, 261U, 5000U})
            EXPECT_TRUE(writer.AddString(std::string(length, 'n'), "x"));
        EXPECT_TRUE(writer.AddDirectoryName(std::string(400, 'd')));
    }
    const std::string cut(259, 'n');
    EXPECT_EQ(walk(archive), (Names{cut, cut, cut, cut, std::string(259, 'd')}));
    ZipWriter writer(scratch.name("b.zip"));
    EXPECT_FALSE(writer.AddString(std::string(70000, 'n'), "longer than its length can say"));
}

TEST_F(Zip, PathsAndNamesAreInTheHostsEncoding)
{
    const ScopedCodePage page("Shift_JIS");
    // The second byte of this letter is that of a backslash.
    const std::string letter = "\x95\x5c";
    const std::string packed = scratch.name(letter + ".zip");
    scratch.put("tree/表", "table");
    EXPECT_TRUE(ZipDir(packed, scratch.name("tree")));
    EXPECT_TRUE(scratch.has("表.zip"));
    std::string name;
    bool isDirectory = true;
    EXPECT_TRUE(ZipReader(packed).GetFirst(name, isDirectory));
    EXPECT_EQ(name, letter);
    EXPECT_FALSE(isDirectory) << "the last byte is no separator";
    EXPECT_TRUE(UnzipToDir(packed, out));
    EXPECT_EQ(scratch.read("out/表"), "table");
}

TEST_F(Zip, AStreamThatBreaksIsAFailure)
{
    {
        ZipWriter writer(archive);
        ASSERT_TRUE(writer.AddString("a", noise(20000)) && writer.AddString("b", "one chunk"));
    }
    ZipReader reader(archive);
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
    ZipWriter writer(scratch.name("b.zip"));
    EXPECT_FALSE(writer.AddStream("a", broken));
    EXPECT_TRUE(writer.AddString("b", "still open"));
}

} // namespace
