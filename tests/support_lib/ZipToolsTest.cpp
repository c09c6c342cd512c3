#include <cstdlib>

#include "support/ZipWriter.h"
#include "support_lib/ZipFixture.h"

/// Archives of zip(1), and ours in unzip(1).
namespace {

class ZipTools : public ZipFixture
{
protected:
    void SetUp() override
    {
        if (std::system("command -v zip unzip >/dev/null 2>&1") != 0)
            GTEST_SKIP() << "zip or unzip is not installed";
    }

    int run(const std::string& command) const
    {
        const std::string place = "cd '" + scratch.path.string() + "' && ";
        const int status = std::system((place + command + " >/dev/null 2>&1").c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(ZipTools, ArchivesOfZipAreUnpacked)
{
    scratch.put("tree/sub/numbers.csv", std::string(50000, '7'));
    scratch.put("tree/sub/deep/größe", "text");
    scratch.put("tree/tiny", "!");
    // Deflated, stored, and written to a pipe, so with sizes behind the data.
    ASSERT_EQ(run("(cd tree && zip -r ../a.zip . && zip -0r ../b.zip . && "
                  "zip -r - . | cat >../c.zip)"),
              0);
    for (const std::string name : {"a", "b", "c"}) {
        ASSERT_TRUE(UnzipToDir(scratch.name(name + ".zip"), scratch.name(name))) << name;
        EXPECT_EQ(run("diff -r tree " + name), 0) << name;
        ZipReader reader(scratch.name(name + ".zip"));
        std::string text;
        EXPECT_TRUE(reader.GotoFile("sub\\deep\\größe") && reader.ExportString(text)) << name;
        EXPECT_EQ(text, "text");
    }
}

TEST_F(ZipTools, OurArchivesAreSoundToUnzip)
{
    scratch.put("tree/sub/a", std::string(50000, '7'));
    scratch.put("tree/b", "");
    ASSERT_TRUE(ZipDir(archive, scratch.name("tree")));
    EXPECT_EQ(run("unzip -t a.zip"), 0);
    // It warns of the backslashes, status 1, and takes them for separators.
    EXPECT_EQ(run("unzip a.zip -d out"), 1);
    EXPECT_EQ(run("diff -r tree out"), 0);
}

} // namespace
