#include "bridge/JsonImage.h"

#include <functional>
#include <limits>

#include "JNIException.h"
#include "bridge/JsonImageWriter.h"
#include "render/Rendering.h"

namespace {

std::string show(const JsonValue& value)
{
    if (value.isText())
        return "'" + std::string(value.text()) + "'";
    if (value.isNumber())
        return std::to_string(value.number()) + "/" + std::to_string(value.integer());
    if (!value.isArray())
        return value ? (value.isObject() ? "{}" : value.flag(false) ? "true" : "false") : "null";
    std::string text = "[";
    for (const JsonValue element : value)
        text += show(element) + " ";
    return text + std::to_string(value.size()) + "]";
}

class JsonImageTest : public RenderTest
{
protected:
    /// The image as the Java side lays it out, and as the wrappers do.
    void forBoth(const std::string& text, const std::function<void(const JsonValue&)>& check)
    {
        JNIJSONObject document(json(text).c_str());
        const JsonImage image = JsonImage::of(document, document.getTop());
        check(image.root());
        std::vector<JsonNode> nodes;
        std::vector<char> texts;
        JsonImageWriter(nodes, texts).write(document.getTop());
        check(JsonValue(nodes.data(), texts.data()));
    }
};

} // namespace

TEST_F(JsonImageTest, BothWaysGiveTheSameValues)
{
    forBoth("{'a':[null,true,1,-2.7,'x',[[]],{}],'b':{'c':{'d':'e'}},'z':0}",
            [](const JsonValue& root) {
                EXPECT_EQ(show(root["a"]), "[null true 1.000000/1 -2.700000/-2 'x' [[0] 1] {} 7]");
                EXPECT_EQ(root["b"]["c"]["d"].text(), "e");
                EXPECT_TRUE(root["z"].isNumber());
                EXPECT_FALSE(root["b"]["missing"]["d"]);
                EXPECT_FALSE(root["d"]);
                EXPECT_EQ(root["a"].text(), "");
                EXPECT_EQ(root["b"].size(), 0U);
                EXPECT_EQ(root["z"].integer(5), 0);
                EXPECT_EQ(root["b"].integer(5), 5);
                EXPECT_TRUE(root["z"].flag(true));
            });
    forBoth("{'i':[2147483648,1e300,-1e300,123456789012345678901234567890,9007199254740993],"
            "'t':['','\\u0000\u00e9\u4e2d\\ud83d\\ude00','\\ud83d']}",
            [](const JsonValue& root) {
                std::vector<int> integers;
                const JsonValue numbers = root["i"];
                for (const JsonValue number : numbers)
                    integers.push_back(number.integer());
                constexpr int kMost = std::numeric_limits<int>::max();
                EXPECT_THAT(integers,
                            testing::ElementsAre(-kMost - 1, kMost, -kMost - 1, kMost, 1));
                const std::string nul(1, '\0');
                EXPECT_EQ(show(root["t"]), "['' '" + nul + "\u00e9\u4e2d\U0001F600' '\uFFFD' 3]");
            });
}

TEST_F(JsonImageTest, ACallThatReturnsNothingChangesNoValue)
{
    JNIJSONObject document(json("{'a':['x',2]}").c_str());
    int call = 1;
    for (bool wasReached = true; wasReached; ++call) {
        jni().failAt(call, RecordingJni::Fault::NothingReturned);
        try {
            EXPECT_EQ(show(JsonImage::of(document, document.getTop()).root()["a"]),
                      "['x' 2.000000/2 2]")
                << jni().failedFunction();
        } catch (const JNIException&) { // NOLINT(bugprone-empty-catch): an error is right too
        }
        wasReached = jni().endFault();
    }
    EXPECT_GT(call, 4);
}

TEST_F(JsonImageTest, DepthIsBounded)
{
    JNIJSONArray own;
    own.add(&own);
    EXPECT_THROW(JsonImage::of(own, own.getObject()), JNIException);
    std::vector<JsonNode> nodes;
    std::vector<char> texts;
    EXPECT_THROW(JsonImageWriter(nodes, texts).write(own.getObject()), JNIException);
    EXPECT_FALSE(JsonImage::of(own, nullptr).root());
}
