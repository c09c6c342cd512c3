#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

#include <utility>

namespace {
struct TextCase
{
    std::string text;
    int units; ///< the length of the Java string
    std::string back;
};

class TextRoundTrip : public JvmTest, public testing::WithParamInterface<TextCase>
{
};
} // namespace

TEST_P(TextRoundTrip, KeepsCharacters)
{
    JNIHvlAccessor accessor;
    const auto java = static_cast<jstring>(accessor.newObject(GetParam().text, false, false));
    EXPECT_EQ(env()->GetStringLength(java), GetParam().units);
    EXPECT_EQ(accessor.getString(java), GetParam().back);
    env()->DeleteLocalRef(java);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextRoundTrip,
    testing::Values(TextCase{"", 0, ""}, TextCase{"plain", 5, "plain"},
                    TextCase{"Größe", 5, "Größe"}, TextCase{"日本", 2, "日本"},
                    TextCase{"\uD7A3\uE000\uFFFD", 3, "\uD7A3\uE000\uFFFD"},
                    TextCase{"a😀b", 4, "a😀b"}, TextCase{"\U0010FFFF", 2, "\U0010FFFF"},
                    TextCase{std::string("a\0b", 3), 3, std::string("a\0b", 3)},
                    // What is not UTF-8: a lone lead byte, one cut off by another character and by
                    // the end, an overlong NUL, a surrogate, a character beyond the last.
                    TextCase{"\xE4"
                             "x",
                             2, "\uFFFDx"},
                    TextCase{"\xE2\x82x", 2, "\uFFFDx"}, TextCase{"\xF0\x9F\x98", 1, "\uFFFD"},
                    TextCase{"\xC0\x80", 2, "\uFFFD\uFFFD"},
                    TextCase{"\xED\xA0\x80", 3, "\uFFFD\uFFFD\uFFFD"},
                    TextCase{"\xF4\x90\x80\x80", 4, "\uFFFD\uFFFD\uFFFD\uFFFD"}));

using TextTest = JvmTest;

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
