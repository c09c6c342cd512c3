#include <limits>

#include <gtest/gtest.h>

#include "base/AsciiText.h"
#include "base/JsonDepth.h"
#include "base/ListText.h"
#include "base/NativePath.h"
#include "base/NearestName.h"
#include "base/NumberText.h"
#include "base/ScopeExit.h"
#include "base/Utf8.h"

using namespace std::literals;

namespace {

TEST(NearestName, FindsWhatTheUserMeant)
{
    struct Row
    {
        std::string_view name;
        std::vector<std::string_view> candidates;
        std::string_view nearest;
    };
    const Row rows[] = {
        {"tmp", {"wind", "temp"}, "temp"},                   // a letter is missing
        {"tempp", {"temp"}, "temp"},                         // a letter is too many
        {"tomp", {"temp"}, "temp"},                          // another letter
        {"nroth", {"south", "north"}, "north"},              // exchanged neighbours
        {"NORTG", {"north"}, "north"},                       // letter case does not count
        {"temp", {"temporary", "temperature"}, "temporary"}, // the shortest with this beginning
        {"Tem", {"tom", "temperature"}, "temperature"},      // a beginning before a typing error
        {"te", {"temperature"}, ""},                         // too short for a beginning
        {"x", {"y"}, ""},                                    // nothing in common
        {"weather", {"precipitation"}, ""},                  // not similar
        {"mnths", {"", "months"}, "months"},                 // an empty candidate
        {"abcdef", {"abxxef"}, "abxxef"},                    // a third of the letters
        {"abcdef", {"axxxef"}, ""},                          // more than a third
        {std::string_view("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"),
         {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"},
         ""}, // longer than a name
    };
    for (const Row& row : rows)
        EXPECT_EQ(base::nearestName(row.name, row.candidates), row.nearest) << row.name;
    EXPECT_EQ(base::suggestion("tmp", {"temp"}), "; did you mean \"temp\"?");
    EXPECT_EQ(base::suggestion("tmp", {"wind"}), "");
}

TEST(NumberText, ConvertsBackToTheSameNumber)
{
    for (const char* number : {"0.1", "0", "-0", "100000", "-0.00001", "9.9e-06",
                               "99999999999999984", "1e+17", "-0.000012345678901234568"})
        EXPECT_EQ(base::shortestNumber(std::strtod(number, nullptr)), number);
    EXPECT_EQ(base::shortestNumber(-std::numeric_limits<double>::max()),
              "-1.7976931348623157e+308");
    std::string text = "[";
    base::appendNumber(text, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(text, "[-9223372036854775808");
}

TEST(Text, RoundedNumbersKeepTheirWholeUnits)
{
    const std::tuple<double, int, const char*> cases[] = {{2.33333333e-5, 7, "0.00002333333"},
                                                          {1234567.891, 6, "1234568"},
                                                          {9.99996, 5, "10"},
                                                          {-0.125, 6, "-0.125"},
                                                          {100000, 4, "100000"},
                                                          {0, 6, "0"},
                                                          {1.0 / 3e6, 4, "3.333e-07"},
                                                          {1e15, 6, "1e+15"},
                                                          {1e-5, 4, "0.00001"},
                                                          {0.5, 1, "0.5"},
                                                          {-1e300, 3, "-1e+300"}};
    for (const auto& [number, digits, text] : cases)
        EXPECT_EQ(base::roundedNumber(number, digits), text);
    EXPECT_EQ(base::roundedNumber(std::numeric_limits<double>::infinity()), "inf");
}

TEST(Text, ListsTexts)
{
    using Texts = std::vector<std::string>;
    EXPECT_EQ(base::quotedList(Texts{}), "");
    EXPECT_EQ(base::quotedList(Texts{"a", "", "c"}), R"("a", "", "c")");
    EXPECT_EQ(base::joined(Texts{"", "b"}, "; "), "; b");
}

TEST(Text, TrimsBothEnds)
{
    EXPECT_EQ(base::trimmed(" \ta b\t "), "a b");
    EXPECT_EQ(base::trimmed(" \t"), "");
    EXPECT_EQ(base::trimmed("\ta ", " "), "\ta");
    EXPECT_EQ(base::lowerCase("AZ@[\xC3\x84"), "az@[\xC3\x84");
}

TEST(Utf8, DecodesCharactersAndInvalidBytes)
{
    struct Row
    {
        std::string_view text;
        char32_t code;
        std::size_t length;
    };
    constexpr Row rows[] = {
        {"a", U'a', 1},
        {"\xC2\x80"sv, 0x80, 2},
        {"\xEF\xBF\xBF"sv, 0xFFFF, 3},
        {"\xF4\x8F\xBF\xBF"sv, 0x10FFFF, 4},
        {"\xC1\xBF"sv, 0xDCC1, 1},         // overlong
        {"\xE0\x9F\xBF"sv, 0xDCE0, 1},     // overlong
        {"\xF0\x8F\xBF\xBF"sv, 0xDCF0, 1}, // overlong
        {"\xED\xA0\x80"sv, 0xDCED, 1},     // a surrogate
        {"\xF4\x90\x80\x80"sv, 0xDCF4, 1}, // above U+10FFFF
        {"\xE2\x82"sv, 0xDCE2, 1},         // incomplete
        {"\xE2\x82z"sv, 0xDCE2, 1},
        {"\x80"sv, 0xDC80, 1},
        {"\xFF"sv, 0xDCFF, 1},
    };
    for (const Row& row : rows) {
        const base::Character character = base::decodeCharacter(row.text);
        EXPECT_EQ(character.code, row.code) << row.text;
        EXPECT_EQ(character.length, row.length) << row.text;
        const std::string whole = "eight bytes, " + std::string(row.text);
        EXPECT_EQ(base::isUtf8(whole), !base::isStrayByte(row.code)) << row.text;
        if (base::isStrayByte(row.code))
            continue;
        std::string written;
        base::appendCharacter(written, row.code);
        EXPECT_EQ(written, row.text);
    }
}

TEST(NativePath, HasAFolderAndAName)
{
    struct Row
    {
        const char* path;
        const char* folder;
        const char* name;
    };
    for (const auto& [path, folder, name] :
         {Row{"/a/b", "/a", "b"}, Row{"/a", "/", "a"}, Row{"x/a", "x", "a"}, Row{"a", ".", "a"}}) {
        EXPECT_EQ(base::folderOf(path), folder);
        EXPECT_EQ(base::fileNameOf(path), name);
    }
}

TEST(Utf8, CutsBetweenCharacters)
{
    constexpr std::string_view text = "a\u20ACb";
    EXPECT_EQ(base::countCharacters(text), 3U);
    EXPECT_EQ(base::wholeCharacters(text, 9), 5U);
    EXPECT_EQ(base::wholeCharacters(text, 4), 4U);
    EXPECT_EQ(base::wholeCharacters(text, 3), 1U);
    EXPECT_EQ(base::wholeCharacters("\x80\x80", 1), 0U);
}

TEST(JsonNesting, CountsAcrossPieces)
{
    struct Row
    {
        std::string_view text;
        bool fits;
    };
    const Row rows[] = {
        {R"({"a": [1, 2], "b": [3]})", true},
        {R"({"a": [[1]]})", false},
        {R"({"a": "[[[{{{\\"})", true},
        {R"({"a": "\"[[["})", true},
        {R"({"a": "\\", "b": [[1]]})", false},
        {"]]] {}\n[[[", false},
        {"{\"a\": \"no end [[[\n{\"a\": [1]}", false}, // the first record has no end
    };
    for (const Row& row : rows) {
        base::JsonNesting whole(2);
        EXPECT_EQ(whole.take(row.text), row.fits) << row.text;
        base::JsonNesting pieces(2);
        bool fits = true;
        for (const char& byte : row.text)
            fits = fits && pieces.take({&byte, 1});
        EXPECT_EQ(fits, row.fits) << row.text;
    }
}

TEST(ScopeExit, RunsOnEveryExit)
{
    int depth = 1;
    try {
        const base::ScopeExit leave([&] { --depth; });
        throw depth;
    } catch (int) {
    }
    EXPECT_EQ(depth, 0);
}

} // namespace
