#include <algorithm>
#include <set>
#include <utility>

#include "RawZip.h"
#include "support/FullDisk.h"
#include "support/Paths.h"
#include "support/ZipWriter.h"
#include "support_lib/ZipFixture.h"

/// Archives that are damaged, very large, or have nowhere to go.
namespace {

namespace fs = std::filesystem;
using ZipDamage = ZipFixture;
using ZipSize = ZipFixture;

std::string text()
{
    std::string result;
    for (int i = 0; i < 3000; ++i)
        result += std::to_string(i * i) + ' ';
    return result;
}

template <typename Change>
RawEntry changed(Change change)
{
    RawEntry entry = RawEntry::deflated("bad", text());
    change(entry);
    return entry;
}

TEST_F(ZipDamage, IsNeverGivenOutAsContent)
{
    const std::pair<const char*, RawEntry> rows[] = {
        {"checksum", changed([](RawEntry& entry) { entry.crc ^= 1; })},
        {"size too large", changed([](RawEntry& entry) { ++entry.size; })},
        {"size far too large", changed([](RawEntry& entry) { entry.size = 1U << 29; })},
        {"size too small", changed([](RawEntry& entry) { --entry.size; })},
        {"size of nothing", changed([](RawEntry& entry) { entry.size = 0; })},
        {"data breaks off", changed([](RawEntry& entry) { entry.packedSize -= 20; })},
        {"no data", changed([](RawEntry& entry) { entry.packedSize = 0; })},
        {"data beyond the end", changed([](RawEntry& entry) { entry.data.resize(40); })},
        {"garbage behind a start", changed([](RawEntry& entry) {
             entry.data.replace(entry.data.size() / 2, 100, 100, '\xff');
         })},
        {"stored, too large", [] {
             RawEntry entry = RawEntry::stored("bad", text());
             ++entry.size;
             return entry;
         }()}};
    for (const auto& [what, entry] : rows) {
        SCOPED_TRACE(what);
        scratch.put("a.zip", RawZip().add(entry).finish());
        scratch.put("out/bad", "old");
        std::string content = "as before";
        EXPECT_FALSE(ZipReader(archive).ExportString(content));
        EXPECT_EQ(content, "");
        EXPECT_FALSE(ZipReader(archive).ExportFile(scratch.name("out\\bad")));
        EXPECT_FALSE(UnzipToDir(archive, out));
        EXPECT_EQ(scratch.read("out/bad"), "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path / "out"), {}), 1);
    }
    // What is shorter than it says leaves the next entry.
    const RawEntry bad = changed([](RawEntry& entry) { ++entry.size; });
    scratch.put("a.zip", RawZip().add(bad).add(RawEntry::stored("good", "x")).finish());
    ZipReader reader(archive);
    std::string content;
    EXPECT_FALSE(reader.ExportString(content));
    EXPECT_TRUE(reader.GotoFile("good") && reader.ExportString(content));
}

TEST_F(ZipDamage, OfTheDirectoryIsNoEnd)
{
    std::string bytes =
        RawZip().add(RawEntry::stored("a", "x")).add(RawEntry::stored("b", "x")).finish();
    const std::string intact = bytes;
    const std::size_t first = bytes.find("PK\1\2");
    for (const std::size_t place : {first, bytes.find("PK\1\2", first + 1)}) {
        bytes = intact;
        bytes[place] = '?';
        scratch.put("a.zip", bytes);
        EXPECT_FALSE(UnzipToDir(archive, out)) << place;
    }
}

// Whatever the reader gives out of an archive with one wrong byte is what went into it.
TEST_F(ZipDamage, OfAnyOneByteOrOfTheEndIsSeen)
{
    const std::set<std::string> contents = {"", "stored content", std::string(500, 'd')};
    const std::string intact = RawZip()
                                   .add(RawEntry::stored("folder/", ""))
                                   .add(RawEntry::stored("folder/s", "stored content"))
                                   .add(RawEntry::deflated("d", std::string(500, 'd')))
                                   .finish();
    const auto check = [&](const std::string& bytes, std::size_t place) {
        scratch.put("a.zip", bytes);
        ZipReader reader(archive);
        forEachEntry(reader, [&](const std::string& name, bool) {
            std::string content;
            if (!reader.ExportString(content))
                return;
            EXPECT_TRUE(contents.count(content) == 1) << "byte " << place << ": " << content;
            // An empty content is that of the folder, whose name may have been hurt.
            EXPECT_TRUE(!content.empty() || name.substr(0, 3) != "d") << place;
        });
    };
    for (std::size_t place = 0; place < intact.size(); ++place)
        for (const int bits : {0x01, 0x08, 0x80, 0xff}) {
            std::string bytes = intact;
            bytes[place] = static_cast<char>(bytes[place] ^ bits);
            check(bytes, place);
        }
    for (std::size_t size = 0; size < intact.size(); ++size) {
        scratch.put("a.zip", intact.substr(0, size));
        const bool unpacked = UnzipToDir(archive, out);
        // The last bytes say only how long the comment is.
        EXPECT_TRUE(!unpacked || (size > intact.size() - 8 && scratch.has("out/d"))) << size;
        fs::remove_all(scratch.path / "out");
    }
}

TEST_F(ZipSize, AHundredThousandEntriesAreWalkedAndFound)
{
    constexpr int kCount = 100000;
    {
        ZipWriter writer(archive);
        for (int i = 0; i < kCount; ++i)
            ASSERT_TRUE(writer.AddString("entry " + std::to_string(i), std::to_string(i)));
    }
    ZipReader reader(archive);
    std::string content;
    EXPECT_TRUE(reader.GotoFile("entry 99999") && reader.ExportString(content));
    EXPECT_EQ(content, "99999");
    int count = 0;
    forEachEntry(reader, [&](const std::string& name, bool) {
        EXPECT_EQ(name, "entry " + std::to_string(count++));
    });
    EXPECT_EQ(count, kCount);
}

// Minizip has no count for exactly this many, which is the value for "more".
TEST_F(ZipSize, ADirectoryOf65535EntriesHasAnEnd)
{
    RawZip zip;
    for (int i = 0; i < 0xffff; ++i)
        zip.add(RawEntry::stored(std::to_string(i) + "/", ""));
    scratch.put("a.zip", zip.finish());
    // So many folders can keep a disk busy for minutes; memory takes them at once.
    const fs::path memory = "/dev/shm";
    const fs::path target =
        fs::exists(memory) ? memory / scratch.path.filename() : scratch.path / "out";
    EXPECT_TRUE(UnzipToDir(archive, FormalizeFilePath(target.string(), false)));
    EXPECT_TRUE(fs::exists(target / "65534"));
    fs::remove_all(target);
}

TEST_F(ZipSize, ADiskThatIsFullIsAFailure)
{
    scratch.put("tree/a", text());
    ASSERT_TRUE(ZipDir(archive, scratch.name("tree")));
    const auto whole = fs::file_size(scratch.path / "a.zip");
    fs::create_directories(scratch.path / "out");
    const FullDisk full(whole - 10);
    {
        // Too little to leave the buffers before the entry is closed.
        std::string scattered = text();
        std::reverse(scattered.begin(), scattered.end());
        ZipWriter writer(scratch.name("c.zip"));
        EXPECT_FALSE(writer.AddString("a", text() + scattered));
        EXPECT_FALSE(writer.AddString("b", ""));
    }
    ZipReader reader(archive);
    EXPECT_FALSE(reader.ExportFile(scratch.name("out\\a")));
    EXPECT_TRUE(fs::is_empty(scratch.path / "out"));
    // What does not fit is the end of the archive, which is written last.
    EXPECT_FALSE(ZipDir(scratch.name("b.zip"), scratch.name("tree")));
}

} // namespace
