#include "MultiByte.h"

#include <tuple>

#include <gtest/gtest.h>

#include "support/HostScopes.h"

namespace {

/// A conversion as the tests look at it: the text, and "!" where something was substituted.
using Convert = int (*)(const char*, std::string&, void*);

std::string converted(Convert convert, const char* text, void* converter)
{
    std::string result = "left over";
    const bool lossy = convert(text, result, converter) != 0;
    return lossy ? result + "!" : result;
}

std::string toUtf8(const char* text, void* converter = nullptr)
{
    return converted(VEXAMBGenericToU8, text, converter);
}

std::string fromUtf8(const char* text, void* converter = nullptr)
{
    return converted(VEXAMBU8ToGeneric, text, converter);
}

} // namespace

TEST(Encoding, TextsGoToUtf8AndBackUnchanged)
{
    const std::tuple<const char*, const char*, const char*> samples[] = {
        {"UTF-8", "Größe 🐧", "Größe 🐧"},
        {"windows-1252", "Gr\366\337e \200", "Größe €"},
        {"ISO-8859-15", "\244 \275\351", "€ œé"},
        {"Shift_JIS", "\x95\x5C\x8E\xA6\\a", "表示\\a"}, // the second byte is 0x5C
        {"GB18030", "\xD6\xD0 \x84\x31\xA4\x37", "中 \uFFFD"},
        {"ISO-8859-1", "", ""},
    };
    for (const auto& [codePage, bytes, utf8] : samples) {
        SCOPED_TRACE(codePage);
        void* converter = VEXAMBConverterNew_A(codePage);
        ASSERT_TRUE(converter);
        EXPECT_EQ(toUtf8(bytes, converter), utf8);
        EXPECT_EQ(fromUtf8(utf8, converter), bytes);
        VEXAMBConverterDelete_A(converter);
        const ScopedCodePage page(codePage);
        EXPECT_EQ(toUtf8(bytes), utf8);
    }
}

TEST(Encoding, WhatCannotBeConvertedIsSubstitutedAndReported)
{
    EXPECT_EQ(toUtf8("a\377b"), "a\uFFFDb!");
    EXPECT_EQ(toUtf8("cut \xE2\x82"), "cut \uFFFD!");
    EXPECT_EQ(toUtf8("\xED\xA0\x80").substr(0, 3), "\uFFFD"); // a surrogate
    EXPECT_EQ(toUtf8(nullptr), "");
    const ScopedCodePage page("windows-1252");
    EXPECT_EQ(fromUtf8("a表b"), "a?b!");
    // ICU would leave a joiner out without a word.
    EXPECT_EQ(fromUtf8("zero\u200Dwidth"), "zerowidth!");
    // What went wrong before leaves nothing behind.
    EXPECT_EQ(fromUtf8("é"), "\xE9");
}

TEST(Encoding, UnfitCodePagesAreRefused)
{
    const ScopedCodePage page("windows-1252");
    EXPECT_FALSE(qUTF8mode());
    // UTF-16 holds NUL bytes, ISO-2022 shift states: no text of the host can be that.
    for (const char* name : {"no such page", "", "UTF-16", "ISO-2022-JP"}) {
        EXPECT_EQ(VEXAMBConverterNew_A(name), nullptr) << name;
        EXPECT_FALSE(SetDefaultCodePage(name)) << name;
    }
    EXPECT_FALSE(SetDefaultCodePage("IBM-37")); // not even letters are as in ASCII
    EXPECT_EQ(VEXAMBDefaultCodePage(), "windows-1252");
    EXPECT_TRUE(SetDefaultCodePage("utf8"));
    EXPECT_TRUE(qUTF8mode());
    VEXAMBConverterDelete_A(nullptr);
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

TEST(Encoding, CharactersAreFoundAndReplacedWhole)
{
    const struct
    {
        const char* codePage;
        const char* text;
        char character;
        int found; // -1: nowhere
        const char* replaced;
    } rows[] = {
        {"Shift_JIS", "C:\\\x95\x5C\\\x83\x5C.sav", '\\', 2, "C:/\x95\x5C/\x83\x5C.sav"},
        {"Shift_JIS", "\x95\x5Cx\\", '\\', 3, "\x95\x5Cx/"},
        {"Shift_JIS", "\x95\x5C", '\\', -1, "\x95\x5C"},
        {"Shift_JIS", "ab\x95", '\\', -1, "ab\x95"}, // ends in the middle of a character
        {"UTF-8", "ä\\ö\\", '\\', 2, "ä/ö/"},
        {"UTF-8", "ä\\", '\xC3', -1, "ä\\"}, // a byte of a longer character is not a character
    };
    for (const auto& row : rows) {
        const ScopedCodePage page(row.codePage);
        const char* found = VEXAMBstrchr_A(row.text, row.character);
        EXPECT_EQ(found == nullptr ? -1 : found - row.text, row.found) << row.text;
        std::string buffer = row.text;
        VEXAMBStringReplaceChar_A(buffer, row.character, '/');
        EXPECT_EQ(buffer, row.replaced);
        EXPECT_EQ(*VEXAMBstrchr_A(row.text, '\0'), '\0');
    }
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
