#include <gtest/gtest.h>

#include "HostScopes.h"
#include "MultiByte.h"

namespace {

std::string toUtf8(const std::string& text, void* converter, int expected = 0)
{
    std::string result = "left over";
    EXPECT_EQ(VEXAMBGenericToU8(text.c_str(), result, converter) != 0, expected != 0) << result;
    return result;
}

std::string fromUtf8(const std::string& text, void* converter, int expected = 0)
{
    std::string result = "left over";
    EXPECT_EQ(VEXAMBU8ToGeneric(text.c_str(), result, converter) != 0, expected != 0) << result;
    return result;
}

struct Sample
{
    const char* codePage;
    const char* bytes;
    const char* utf8;
};

const Sample kSamples[] = {
    {"UTF-8",
     "Gr\xC3\xB6\xC3\x9F"
     "e \xF0\x9F\x90\xA7",
     "Größe 🐧"},
    {"windows-1252",
     "Gr\xF6\xDF"
     "e \x80",
     "Größe €"},
    {"ISO-8859-15", "\xA4 \xBD\xE9", "€ œé"},
    {"Shift_JIS", "\x95\x5C\x8E\xA6\\a", "表示\\a"}, // the second byte of the first one is 0x5C
    {"GB18030", "\xD6\xD0\x95\x30\xDB\x35 \x84\x31\xA4\x37", nullptr},
    {"ISO-8859-1", "", ""},
};

} // namespace

TEST(Encoding, TextsGoToUtf8AndBackUnchanged)
{
    for (const Sample& sample : kSamples) {
        SCOPED_TRACE(sample.codePage);
        void* converter = VEXAMBConverterNew_A(sample.codePage);
        ASSERT_TRUE(converter);
        const std::string utf8 = toUtf8(sample.bytes, converter);
        if (sample.utf8) {
            EXPECT_EQ(utf8, sample.utf8);
        }
        EXPECT_EQ(fromUtf8(utf8, converter), sample.bytes);
        VEXAMBConverterDelete_A(converter);

        const ScopedCodePage page(sample.codePage);
        EXPECT_EQ(toUtf8(sample.bytes, nullptr), utf8);
    }
}

TEST(Encoding, WhatCannotBeConvertedIsSubstitutedAndReported)
{
    EXPECT_EQ(toUtf8("a\xFF"
                     "b",
                     nullptr, 1),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(toUtf8("cut \xE2\x82", nullptr, 1), "cut \xEF\xBF\xBD");
    EXPECT_EQ(toUtf8("\xED\xA0\x80", nullptr, 1).substr(0, 3), "\xEF\xBF\xBD"); // a surrogate
    const ScopedCodePage page("windows-1252");
    EXPECT_EQ(fromUtf8("a表b", nullptr, 1), "a?b");
    // ICU would leave a joiner out without a word.
    EXPECT_EQ(fromUtf8("zero\xE2\x80\x8Dwidth", nullptr, 1), "zerowidth");
    // What went wrong before leaves nothing behind.
    EXPECT_EQ(fromUtf8("é", nullptr), "\xE9");
}

TEST(Encoding, NullTextIsEmptyAndUnknownCodePagesHaveNoConverter)
{
    std::string result = "left over";
    EXPECT_EQ(VEXAMBGenericToU8(nullptr, result, nullptr), 0);
    EXPECT_EQ(result, "");
    // UTF-16 holds NUL bytes, ISO-2022 shift states: no text of the host can be that.
    for (const char* name : {"no such page", "", "UTF-16", "ISO-2022-JP"})
        EXPECT_EQ(VEXAMBConverterNew_A(name), nullptr) << name;
    VEXAMBConverterDelete_A(nullptr);
}

TEST(Encoding, TheHostKeepsItsCodePageIfTheNewOneIsUnfit)
{
    const ScopedCodePage page("windows-1252");
    EXPECT_EQ(VEXAMBDefaultCodePage(), "windows-1252");
    EXPECT_FALSE(qUTF8mode());
    for (const char* name : {"no such page", "IBM-37", "UTF-16LE", ""}) // IBM-37 is no ASCII
        EXPECT_FALSE(SetDefaultCodePage(name)) << name;
    EXPECT_EQ(VEXAMBDefaultCodePage(), "windows-1252");
    EXPECT_TRUE(SetDefaultCodePage("utf8"));
    EXPECT_TRUE(qUTF8mode());
}

TEST(Encoding, AConverterOfTheHostKeepsTheCodePageOfItsBirth)
{
    void* converter = nullptr;
    {
        const ScopedCodePage page("windows-1252");
        converter = VEXAMBConverterNew_A(nullptr);
    }
    EXPECT_EQ(toUtf8("\xE9", converter), "é");
    VEXAMBConverterDelete_A(converter);
}

TEST(Encoding, AByteInsideACharacterIsNotTakenForABackslash)
{
    const ScopedCodePage page("Shift_JIS");
    const std::string path = "C:\\\x95\x5C\\\x83\x5C.sav";
    std::string replaced = path;
    VEXAMBStringReplaceChar_A(replaced, '\\', '/');
    EXPECT_EQ(replaced, "C:/\x95\x5C/\x83\x5C.sav");

    const char* text = "\x95\x5Cx\\";
    EXPECT_EQ(VEXAMBstrchr_A(text, '\\'), text + 3);
    EXPECT_EQ(VEXAMBstrchr_A("\x95\x5C", '\\'), nullptr);
    EXPECT_EQ(*VEXAMBstrchr_A(text, '\0'), '\0');
    // A text that ends in the middle of a character.
    EXPECT_EQ(VEXAMBstrchr_A("ab\x95", '\\'), nullptr);
}

TEST(Encoding, CharactersAreFoundAndReplacedInUtf8)
{
    std::string text = "ä\\ö\\";
    VEXAMBStringReplaceChar_A(text, '\\', '/');
    EXPECT_EQ(text, "ä/ö/");
    // A byte of a longer character is no character.
    VEXAMBStringReplaceChar_A(text, '\xC3', 'x');
    EXPECT_EQ(text, "ä/ö/");
    EXPECT_EQ(VEXAMBstrchr_A(nullptr, 'x'), nullptr);
}

TEST(Encoding, ComparesPrefixesWithoutRegardToCase)
{
    EXPECT_EQ(VEXAMBstrnccmp_A("file:///x", "FILE", 4), 0);
    EXPECT_NE(VEXAMBstrnccmp_A("fil", "file", 4), 0);
    EXPECT_EQ(VEXAMBstrnccmp_A("ÄPFEL", "äpfel", 6), 0);
    EXPECT_LT(VEXAMBstrnccmp_A("abc", "abd", 3), 0);
    EXPECT_GT(VEXAMBstrnccmp_A("b", nullptr, 1), 0);
    EXPECT_EQ(VEXAMBstrnccmp_A("a", "b", 0), 0);
    const ScopedCodePage page("windows-1252");
    EXPECT_EQ(VEXAMBstrnccmp_A("\xC4", "\xE4", 1), 0);
}

TEST(Encoding, TrimsTrailingBlanksAlone)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a b  ", "a b"}, {"   ", ""}, {"", ""}, {" a", " a"}, {"a\t", "a\t"}, {"\xA0 ", "\xA0"}};
    for (const auto& [text, trimmed] : cases) {
        std::string buffer = text;
        VEXAMBstrtrim_A(buffer.data());
        EXPECT_STREQ(buffer.c_str(), trimmed);
    }
    VEXAMBstrtrim_A(nullptr);
}
