#include "data/HVSimpleContainer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "MultiByte.h"

namespace {

namespace fs = std::filesystem;

fs::path nativeOf(const HVSimpleContainer& container)
{
    return ExtNameStr(container.getGenericPath()).GetNative();
}

TEST(Container, TemporaryFileLivesAndDiesWithIt)
{
    fs::path file;
    {
        const HVSimpleContainer first("out", "");
        const HVSimpleContainer second("out", "");
        file = nativeOf(first);
        EXPECT_TRUE(first.isTempFile());
        EXPECT_EQ(first.getName(), "out");
        EXPECT_EQ(first.getGenericPath().rfind(GetVexaTempPath() + "hvcontfile_", 0), 0U);
        EXPECT_EQ(fs::file_size(file), 0U);
        EXPECT_NE(first.getGenericPath(), second.getGenericPath());
    }
    EXPECT_FALSE(fs::exists(file));
}

TEST(Container, PreservedFileStays)
{
    fs::path file;
    {
        HVSimpleContainer container("out", "");
        file = nativeOf(container);
        container.preserveTempFile();
        EXPECT_FALSE(container.isTempFile());
    }
    EXPECT_TRUE(fs::remove(file));
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
    const std::string earlier = VEXAMBDefaultCodePage();
    SetDefaultCodePage("windows-1252");
    const HVSimpleContainer container("in", "c:\\caf\xe9");
    EXPECT_EQ(container.getAbsolutePath(), "c:\\caf\xc3\xa9");
    EXPECT_EQ(container.getGenericPath(), "c:\\caf\xe9");
    SetDefaultCodePage(earlier);
}

} // namespace
