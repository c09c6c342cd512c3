#include "support/Paths.h"

#include <tuple>

#include <gtest/gtest.h>

#include "support/HostScopes.h"
#include "support/Transcoding.h"

namespace {

TEST(Paths, HostSpellingUsesTheBackslash)
{
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"", false, ""},
        {"", true, ""},
        {"c:/a", false, "c:\\a"},
        {"c:/a", true, "c:\\a\\"},
        {"c:/a/", true, "c:\\a\\"},
        {"c:\\a\\", true, "c:\\a\\"},
        {"/", true, "\\"},
        {"a//b", true, "a\\\\b\\"},
    };
    for (const auto& [path, trailing, expected] : rows)
        EXPECT_EQ(FormalizeFilePath(path, trailing), expected) << path;
}

TEST(Paths, JoiningDropsOneLeadingSeparator)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"c:/a", "/b", "c:\\a\\b"},    {"c:\\a\\", "b", "c:\\a\\b"},
        {"c:/a", "//b", "c:\\a\\\\b"}, {"", "/b", "\\b"},
        {"", "b/c/", "b\\c\\"},        {"c:/a", "", "c:\\a\\"},
        {"c:/a", "b/", "c:\\a\\b\\"},  {"", "", ""},
    };
    for (const auto& [first, second, expected] : rows)
        EXPECT_EQ(JoinFilePath(first, second), expected) << first << " + " << second;
}

TEST(Paths, EngineSpellingIsAUrl)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"C:\\data\\a.sav", "file", "file:///C:/data/a.sav"},
        {"\\tmp\\a.sav", "file", "file:////tmp/a.sav"},
        {"file:///x", "file", "/file:///x"},
        {"FILE:///x", "file", "/FILE:///x"},
        {"a\\b", "http", "http://a/b"},
        {"http://h\\b", "http", "http://h/b"},
        {"", "file", "file:///"},
    };
    for (const auto& [path, protocol, expected] : rows) {
        EXPECT_EQ(NormalizeHvlPath(path, protocol), expected) << path;
        EXPECT_EQ(NormalizeHvlPathU(path, protocol), expected) << path;
    }
}

TEST(Paths, FileNameStandsBehindTheLastSeparator)
{
    const struct
    {
        const char* path;
        const char* directory;
        const char* name;
    } rows[] = {
        {"c:\\a\\b.sav", "c:\\a\\", "b.sav"},
        {"a/b\\c/d", "a/b\\c/", "d"},
        {"b.sav", "", "b.sav"},
        {"c:\\a\\", "c:\\a\\", ""},
        {"", "", ""},
    };
    for (const auto& row : rows) {
        std::string directory = "earlier";
        EXPECT_EQ(SeparateFileName(row.path, directory), row.name) << row.path;
        EXPECT_EQ(directory, row.directory) << row.path;
    }
    std::string both = "c:\\a\\b.sav";
    EXPECT_EQ(SeparateFileName(both, both), "b.sav");
    EXPECT_EQ(both, "c:\\a\\");
}

TEST(Paths, LetterWithABackslashByteIsNoSeparator)
{
    const ScopedCodePage page("Shift_JIS");
    const std::string letter = "\x95\x5c";
    const std::string letterUtf8 = "\xe8\xa1\xa8";
    std::string directory;
    EXPECT_EQ(SeparateFileName("c:\\a\\" + letter, directory), letter);
    EXPECT_EQ(directory, "c:\\a\\");
    EXPECT_EQ(FormalizeFilePath("c:/" + letter, true), "c:\\" + letter + "\\");
    EXPECT_EQ(NormalizeHvlPathU("c:\\" + letter, "file"), "file:///c:/" + letterUtf8);
    EXPECT_EQ(transcodeFromUTF8(letterUtf8.c_str(), nullptr), letter);
    EXPECT_EQ(transcodeToUTF8(nullptr, nullptr) + transcodeFromUTF8(nullptr, nullptr), "");
    void* const latin = VEXAMBConverterNew_A("windows-1252");
    EXPECT_EQ(transcodeToUTF8("\xe9", latin), "\xc3\xa9");
    EXPECT_EQ(transcodeFromUTF8("\xc3\xa9", latin), "\xe9");
    VEXAMBConverterDelete_A(latin);
}

} // namespace
