#include <tuple>

#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

using TextTest = JvmTest;

TEST_F(TextTest, CharactersAreKeptAndWhatIsNoUtf8IsReplaced)
{
    const std::string withNul("a\0b", 3);
    // The text, the length of the Java string, and the text that comes back.
    const std::tuple<std::string, int, std::string> rows[] = {
        {"", 0, ""},
        {"plain", 5, "plain"},
        {"Größe", 5, "Größe"},
        {"日本", 2, "日本"},
        {"\uD7A3\uE000\uFFFD", 3, "\uD7A3\uE000\uFFFD"},
        {"a😀b", 4, "a😀b"},
        {"\U0010FFFF", 2, "\U0010FFFF"},
        {withNul, 3, withNul},
        // A lone lead byte, one cut off by another character and by the end, an overlong NUL, a
        // surrogate, a character beyond the last.
        {"\xE4 x", 3, "\uFFFD x"},
        {"\xE2\x82x", 2, "\uFFFDx"},
        {"\xF0\x9F\x98", 1, "\uFFFD"},
        {"\xC0\x80", 2, "\uFFFD\uFFFD"},
        {"\xED\xA0\x80", 3, "\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", 4, "\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    JNIHvlAccessor accessor;
    for (const auto& [text, units, back] : rows) {
        const auto java = static_cast<jstring>(accessor.newObject(text, false, false));
        EXPECT_EQ(env()->GetStringLength(java), units) << text;
        EXPECT_EQ(accessor.getString(java), back);
        env()->DeleteLocalRef(java);
    }
}

TEST_F(TextTest, ASurrogateWithoutItsPartnerIsReplaced)
{
    JNIHvlAccessor accessor;
    const std::pair<std::u16string, std::string> rows[] = {{{u'a', 0xD83D, u'b'}, "a\uFFFDb"},
                                                           {{0xDE00, u'b'}, "\uFFFDb"},
                                                           {{u'a', 0xD83D}, "a\uFFFD"},
                                                           {{0xD83D, 0xD83D, 0xDE00}, "\uFFFD😀"}};
    for (const auto& [units, text] : rows) {
        jstring const java = env()->NewString(reinterpret_cast<const jchar*>(units.data()),
                                              static_cast<jsize>(units.size()));
        EXPECT_EQ(accessor.getString(java), text);
        env()->DeleteLocalRef(java);
    }
}

TEST_F(TextTest, TextReachesTheJobAsUtf8)
{
    JNIJSONObject settings;
    settings.put("Größe 😀", "日本 😀");
    EXPECT_EQ(settings.serialize(), R"({"Größe 😀":"日本 😀"})");
    EXPECT_EQ(JNIJSONObject(R"({"😀":"x"})").keySet(), std::set<std::string>{"😀"});

    JNIHvlProgram program;
    EXPECT_EQ(program.createHvlExpressionLiteral("😀")->generate(), "\"😀\"");
}

TEST_F(TextTest, ANullJavaStringIsTheEmptyText)
{
    JNIHvlAccessor accessor;
    std::string text = "before";
    accessor.getString(nullptr, text);
    EXPECT_EQ(text, "");
}

TEST_F(TextTest, FromJStringKnowsJavaCharsets)
{
    JNIHvlAccessor accessor;
    const auto java = static_cast<jstring>(accessor.newObject("Größe", false, true));
    EXPECT_EQ(accessor.FromJString(java, "ISO-8859-1"), "Gr\xF6\xDF"
                                                        "e");
    EXPECT_EQ(accessor.FromJString(java, "no-such-charset"), "");
    EXPECT_THROW(accessor.exceptionCheck(), std::exception);
}
