#include <gtest/gtest.h>

#include <cstdlib>

#include "support/ScratchFolder.h"
#include "support/ZipReader.h"
#include "support/ZipWriter.h"

/// Archives of zip(1), and ours in unzip(1).
namespace {

bool areToolsThere()
{
    return std::system("command -v zip unzip >/dev/null 2>&1") == 0;
}

int run(const ScratchFolder& scratch, const std::string& command)
{
    const int status = std::system(
        ("cd '" + scratch.path.string() + "' && " + command + " >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ZipTools, ArchivesOfZipAreUnpacked)
{
    if (!areToolsThere())
        GTEST_SKIP() << "zip or unzip is not installed";
    const ScratchFolder scratch;
    scratch.put("tree/sub/numbers.csv", std::string(50000, '7'));
    scratch.put("tree/sub/deep/größe", "text");
    scratch.put("tree/tiny", "!");
    // Deflated, stored, and written to a pipe, so with sizes behind the data.
    ASSERT_EQ(run(scratch, "(cd tree && zip -r ../a.zip . && zip -0r ../b.zip . && "
                           "zip -r - . | cat >../c.zip)"),
              0);
    for (const std::string name : {"a", "b", "c"}) {
        ASSERT_TRUE(UnzipToDir(scratch.folder + "\\" + name + ".zip", scratch.folder + "\\" + name))
            << name;
        EXPECT_EQ(run(scratch, "diff -r tree " + name), 0) << name;
        ZipReader reader(scratch.folder + "\\" + name + ".zip");
        std::string text;
        EXPECT_TRUE(reader.GotoFile("sub\\deep\\größe") && reader.ExportString(text)) << name;
        EXPECT_EQ(text, "text");
    }
}

TEST(ZipTools, OurArchivesAreSoundToUnzip)
{
    if (!areToolsThere())
        GTEST_SKIP() << "zip or unzip is not installed";
    const ScratchFolder scratch;
    scratch.put("tree/sub/a", std::string(50000, '7'));
    scratch.put("tree/b", "");
    ASSERT_TRUE(ZipDir(scratch.folder + "\\a.zip", scratch.folder + "\\tree"));
    EXPECT_EQ(run(scratch, "unzip -t a.zip"), 0);
    // It warns of the backslashes, status 1, and takes them for separators.
    EXPECT_EQ(run(scratch, "unzip a.zip -d out"), 1);
    EXPECT_EQ(run(scratch, "diff -r tree out"), 0);
}

TEST(ZipTools, LinksAndEncryptedFilesAreRefused)
{
    if (!areToolsThere())
        GTEST_SKIP() << "zip or unzip is not installed";
    const ScratchFolder scratch;
    scratch.put("secret", "text");
    ASSERT_EQ(
        run(scratch, "ln -s /etc link && zip -y link.zip link && zip -P word locked.zip secret"),
        0);
    for (const char* name : {"link.zip", "locked.zip"}) {
        EXPECT_FALSE(UnzipToDir(scratch.folder + "\\" + name, scratch.folder + "\\out")) << name;
        EXPECT_TRUE(std::filesystem::is_empty(scratch.path / "out")) << name;
        std::string text;
        EXPECT_FALSE(ZipReader(scratch.folder + "\\" + name).ExportString(text)) << name;
    }
}

} // namespace
