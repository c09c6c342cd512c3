#include <ostream>
#include <streambuf>
#include <utility>

#include "RawZip.h"
#include "support_lib/ZipFixture.h"

/// Archives that somebody made with intent.
namespace {

namespace fs = std::filesystem;
using ZipSafety = ZipFixture;

// What is in the scratch directory, but for the archive and the target.
std::size_t strayFiles(const ScratchFolder& scratch)
{
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(scratch.path))
        count += entry.path().filename() != "a.zip" && entry.path().filename() != "out";
    return count;
}

TEST_F(ZipSafety, NamesThatLeadAwayAreRefused)
{
    const std::string longest(300, 'e');
    const std::string_view names[] = {
        "../evil", "..\\evil", "a/../../evil", "a/../evil",       "..",       "../",
        ".",       "./evil",   "a/./evil",     "/evil",           "\\evil",   "//host/evil",
        "C:evil",  "C:\\evil", "evil:stream",  "a//evil",         "a/evil//", "/",
        "",        "evil\n",   "evil\x7f",     {"evil\0.txt", 9}, longest};
    for (const std::string_view name : names) {
        const bool isFolder = !name.empty() && (name.back() == '/' || name.back() == '\\');
        const std::string content = isFolder ? "" : "x";
        scratch.put("a.zip", RawZip().add(RawEntry::stored(std::string(name), content)).finish());
        fs::create_directories(scratch.path / "out/a");
        EXPECT_FALSE(UnzipToDir(archive, out)) << name;
        ZipReader reader(archive);
        std::string reported;
        bool isDirectory = false;
        EXPECT_TRUE(reader.GetFirst(reported, isDirectory)) << name;
        EXPECT_EQ(isDirectory, isFolder) << name;
        EXPECT_FALSE(reader.ExportFile(scratch.name("out\\taken"))) << name;
        // In memory there is nowhere to lead to.
        EXPECT_TRUE(reader.ExportString(reported)) << name;
        EXPECT_EQ(reported, content) << name;
        EXPECT_EQ(strayFiles(scratch), 0U) << name;
        fs::remove(scratch.path / "out/a");
        EXPECT_TRUE(fs::is_empty(scratch.path / "out")) << name;
    }
}

RawEntry with(RawEntry entry, std::uint32_t attributes)
{
    entry.attributes = attributes;
    return entry;
}

RawEntry plain()
{
    return RawEntry::stored("odd", "x");
}

TEST_F(ZipSafety, OddEntriesAreRefusedAndTheOthersAreNot)
{
    RawEntry encrypted = plain();
    encrypted.flags = 1;
    RawEntry packedOtherwise = plain();
    packedOtherwise.method = 12;
    const std::pair<const char*, RawEntry> rows[] = {
        {"link", RawEntry::withMode("odd", 0120777, "/etc")},
        {"link of a system that has none", with(plain(), 0120777U << 16)},
        {"pipe", RawEntry::withMode("odd", 0010644)},
        {"device", RawEntry::withMode("odd", 0060644)},
        {"folder without a separator", RawEntry::withMode("odd", 0040755)},
        {"file with one", RawEntry::withMode("odd/", 0100644, "")},
        {"folder with content", RawEntry::stored("odd/", "x")},
        {"folder by attribute", with(plain(), 0x10)},
        {"volume label", with(plain(), 0x08)},
        {"reparse point", with(plain(), 0x400)},
        {"encrypted", encrypted},
        {"another method", packedOtherwise}};
    for (const auto& [what, entry] : rows) {
        scratch.put("a.zip", RawZip().add(entry).add(RawEntry::withMode("good", 0100644)).finish());
        EXPECT_FALSE(UnzipToDir(archive, out)) << what;
        EXPECT_TRUE(fs::is_empty(scratch.path / "out")) << what;
        ZipReader reader(archive);
        std::string text = "as before";
        bool isDirectory = false;
        EXPECT_FALSE(reader.ExportString(text)) << what;
        EXPECT_FALSE(reader.ExportFile(scratch.name("out\\odd"))) << what;
        EXPECT_TRUE(reader.GetNext(text, isDirectory) && reader.ExportString(text)) << what;
        EXPECT_EQ(text, "x") << what;
        EXPECT_TRUE(reader.ExportFile(scratch.name("out\\good"))) << what;
        fs::remove_all(scratch.path / "out");
    }
}

TEST_F(ZipSafety, TheFirstOfANameStays)
{
    const RawEntry folder = RawEntry::stored("name/", "");
    const RawEntry first = RawEntry::stored("name", "first");
    const std::pair<const char*, RawZip> rows[] = {
        {"twice", RawZip().add(first).add(RawEntry::stored("name", "second"))},
        {"other separator", RawZip()
                                .add(RawEntry::stored("d/", ""))
                                .add(RawEntry::stored("d/e", "first"))
                                .add(RawEntry::stored("d\\e", "second"))},
        {"then as a folder", RawZip().add(first).add(folder)},
        {"then as a part of the way",
         RawZip().add(first).add(RawEntry::stored("name/x", "second"))},
        {"then as a file", RawZip().add(folder).add(RawEntry::stored("name", "second"))},
        {"a folder twice", RawZip().add(folder).add(folder)}};
    for (const auto& [what, zip] : rows) {
        scratch.put("a.zip", zip.finish());
        EXPECT_FALSE(UnzipToDir(archive, out)) << what;
        for (const auto& entry : fs::recursive_directory_iterator(scratch.path / "out")) {
            const std::string name = fs::relative(entry, scratch.path).string();
            EXPECT_TRUE(entry.is_directory() || scratch.read(name) == "first") << what;
        }
        fs::remove_all(scratch.path / "out");
    }
}

TEST_F(ZipSafety, LinksInTheTargetAreNotFollowed)
{
    scratch.put("outside/kept", "kept");
    fs::create_directories(scratch.path / "out/inside");
    fs::create_directory_symlink(scratch.path / "outside", scratch.path / "out/away");
    fs::create_directory_symlink("inside", scratch.path / "out/near");
    fs::create_symlink(scratch.path / "outside/kept", scratch.path / "out/file");
    for (const char* name : {"away/evil", "away/kept", "away/evil/"}) {
        scratch.put("a.zip", RawZip().add(RawEntry::stored(name, "")).finish());
        EXPECT_FALSE(UnzipToDir(archive, out)) << name;
    }
    scratch.put("a.zip", RawZip()
                             .add(RawEntry::stored("file", "new"))
                             .add(RawEntry::stored("near/a", "new"))
                             .finish());
    EXPECT_TRUE(UnzipToDir(archive, out));
    EXPECT_EQ(scratch.read("out/file"), "new");
    EXPECT_EQ(scratch.read("out/inside/a"), "new");
    EXPECT_EQ(scratch.read("outside/kept"), "kept");
    EXPECT_FALSE(scratch.has("outside/evil"));
}

/// Counts what is written to it.
class CountingBuffer : public std::streambuf
{
public:
    std::uint64_t count = 0;

private:
    std::streamsize xsputn(const char*, std::streamsize size) override
    {
        count += static_cast<std::uint64_t>(size);
        return size;
    }
    int_type overflow(int_type character) override
    {
        ++count;
        return traits_type::not_eof(character);
    }
};

TEST_F(ZipSafety, EntriesThatShareTheirDataAreGivenOutUpToTheLimit)
{
    constexpr std::uint64_t kLimit = std::uint64_t{1} << 30;
    constexpr std::uint64_t kSize = kLimit / 8;
    const RawEntry zeros = RawEntry::deflated("a", std::string(kSize, '\0'));
    RawZip zip;
    zip.add(zeros);
    for (char name = 'b'; name <= 'i'; ++name) {
        RawEntry other = zeros;
        other.name = name;
        zip.share(other);
    }
    scratch.put("a.zip", zip.add(RawEntry::stored("small", "")).finish());
    ZipReader reader(archive);
    CountingBuffer counting;
    std::ostream stream(&counting);
    forEachEntry(reader, [&](const std::string& name, bool) {
        // What is empty takes nothing of the limit.
        EXPECT_EQ(reader.ExportStream(stream), name != "i") << name;
    });
    EXPECT_EQ(counting.count, kLimit);
}

TEST_F(ZipSafety, ADeclaredSizeBeyondTheLimitIsNotEvenTried)
{
    RawEntry huge = RawEntry::deflated("huge", std::string(100000, '\0'));
    huge.size = (1U << 30) + 1;
    scratch.put("a.zip", RawZip().add(huge).finish());
    CountingBuffer counting;
    std::ostream stream(&counting);
    EXPECT_FALSE(ZipReader(archive).ExportStream(stream));
    EXPECT_EQ(counting.count, 0U);
    EXPECT_FALSE(UnzipToDir(archive, out));
    EXPECT_TRUE(fs::is_empty(scratch.path / "out"));
}

TEST_F(ZipSafety, MoreEntriesThanTheLimitAreNotUnpacked)
{
    const RawZip zip = RawZip().add(RawEntry::stored("a", ""));
    for (const std::uint64_t count : {std::uint64_t{1'000'001}, (std::uint64_t{1} << 32) + 1}) {
        scratch.put("a.zip", zip.finishWide(count));
        EXPECT_FALSE(UnzipToDir(archive, out));
        EXPECT_TRUE(fs::is_empty(scratch.path / "out"));
    }
    // The same record with the right count is no obstacle.
    scratch.put("a.zip", zip.finishWide(1));
    EXPECT_TRUE(UnzipToDir(archive, out));
    EXPECT_TRUE(scratch.has("out/a"));
}

} // namespace
