#include <limits>
#include <random>

#include "bridge/JNIObjectManager.h"
#include "hvl/Composing.h"
#include "support/JobTextRoundTrip.h"

// What is composed reads back as it was given: no name and no value can become more of the job.

namespace {

using RoundTrip = Composing;

/// Texts put together from what has a meaning in a job, or none.
std::vector<std::string> texts()
{
    std::vector<std::string> result = {"a",
                                       "if",
                                       "x",
                                       "_",
                                       "1st",
                                       "a b",
                                       "a\\",
                                       "\\",
                                       "`",
                                       "\"",
                                       "\\`",
                                       "\\\"",
                                       "//",
                                       "f1",
                                       "\\u0041",
                                       "%s",
                                       "a`, 1) -> write({\"path\": \"/tmp/b\"}) //"};
    const std::vector<std::string> pieces = {
        "\\",     "`",  "\"", "'",    "/",    "n", "u0041",
        " ",      "\n", "\t", "\x01", "\x7F", "é", "\U0001F600",
        "\u2028", "%s", "//", ")",    "->",   ":", std::string(1, '\0')};
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        std::string text;
        for (auto left = 1 + random() % 5; left > 0; --left)
            text += pieces[random() % pieces.size()];
        result.push_back(text);
    }
    return result;
}

} // namespace

TEST_F(RoundTrip, AnyTextIsReadBackWhereverItStands)
{
    for (const std::string& text : texts()) {
        SCOPED_TRACE(text);
        EXPECT_EQ(JobTextRoundTrip::ofText(program, text), "");
        EXPECT_EQ(JobTextRoundTrip::ofPath(text), "");
        EXPECT_EQ(JobTextRoundTrip::ofJob(text), "");
    }
}

TEST_F(RoundTrip, OnlyTheEscapesOfSlashesAreRemoved)
{
    const std::pair<const char*, const char*> rows[] = {
        {R"(["file:\/\/\/a\/b"])", R"(["file:///a/b"])"},
        {R"(["\/\"b"])", R"(["\/\"b"])"},
        {R"(["a\\/b"])", R"(["a\\/b"])"},
    };
    for (const auto& [json, cleaned] : rows)
        EXPECT_EQ(cleanedJson(json), cleaned);
}

TEST_F(RoundTrip, AnyNumberIsReadBack)
{
    using Integers = std::numeric_limits<std::int64_t>;
    using Reals = std::numeric_limits<double>;
    for (const auto& [integer, real] : {std::pair{std::int64_t{0}, 0.0},
                                        {-1, -0.0},
                                        {Integers::min(), Reals::denorm_min()},
                                        {Integers::max(), -Reals::max()},
                                        {Integers::min() + 1, Reals::min()},
                                        {-(std::int64_t{1} << 53), 0.1},
                                        {1234567890123, -1e22},
                                        {-7, 9007199254740993.0}})
        EXPECT_EQ(JobTextRoundTrip::ofNumbers(program, integer, real), "")
            << integer << " " << real;
}
