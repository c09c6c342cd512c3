#include "data/HVSimpleContainer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "support/HostScopes.h"

namespace {

namespace fs = std::filesystem;

fs::path nativeOf(const HVSimpleContainer& container)
{
    return ExtNameStr(container.getGenericPath()).GetNative();
}

TEST(Container, TemporaryFileLivesAndDiesWithItUnlessPreserved)
{
    fs::path file;
    fs::path preserved;
    {
        const HVSimpleContainer first("out", "");
        HVSimpleContainer second("out", "");
        file = nativeOf(first);
        preserved = nativeOf(second);
        EXPECT_TRUE(first.isTempFile());
        EXPECT_EQ(first.getName(), "out");
        EXPECT_TRUE(first.getGenericPath().starts_with(GetVexaTempPath() + "hvcontfile_"));
        EXPECT_EQ(fs::file_size(file), 0U);
        second.preserveTempFile();
        EXPECT_FALSE(second.isTempFile());
    }
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::remove(preserved));
}

TEST(Container, CallersFileIsLeftAlone)
{
    const std::string path = FormTempName("callers");
    {
        const HVSimpleContainer container("in", path);
        EXPECT_FALSE(container.isTempFile());
        EXPECT_EQ(container.getGenericPath(), path);
        EXPECT_FALSE(fs::exists(nativeOf(container)));
        std::fclose(ExtNameStr::fopen(ExtNameStr(path), "w"));
    }
    EXPECT_EQ(ExtNameStr::remove(ExtNameStr(path)), 0);
}

TEST(Container, EngineGetsThePathInUtf8)
{
    const ScopedCodePage page("windows-1252");
    const HVSimpleContainer container("in", "c:\\caf\xe9");
    EXPECT_EQ(container.getAbsolutePath(), "c:\\caf\xc3\xa9");
    EXPECT_EQ(container.getGenericPath(), "c:\\caf\xe9");
}

} // namespace
