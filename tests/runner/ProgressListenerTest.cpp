#include "runner/RunnerFixture.h"

#include <tuple>

namespace {

using Kind = HostJournal::Kind;
using Names = std::vector<std::string>;

class ProgressListener : public RunnerFixture
{
protected:
    struct Line
    {
        std::string text;
        int level;
        bool operator==(const Line&) const = default;
    };
    /// What displayAllMessages puts out; every line has the one place.
    static std::vector<Line> display(HVProgressListener& listener, bool showError, bool splitLabel)
    {
        HostJournal::instance().clear();
        listener.displayAllMessages(showError, splitLabel);
        std::vector<Line> lines;
        for (const auto& entry : journal(Kind::Error)) {
            EXPECT_EQ(entry.show, kShowInOutput);
            lines.push_back({entry.text, entry.level});
        }
        return lines;
    }
    using Lines = std::vector<Line>;
};

TEST_F(ProgressListener, MessagesAreKeptByTheirIds)
{
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"AEQAE2264I", "a", false}, {"AEQAF0151E", "b", false}, {"AEQAR0051W", "c", false},
        {"", "d", false},           {"AEQAE2264", "e", true},   {"aeqae2264i", "f", true},
        {"AEQAE2264I ", "g", true}, {"W1", "", true},           {"W1", "h", true},
    };
    HVProgressListener listener;
    for (const auto& [id, text, kept] : rows) {
        listener.reset();
        listener.onMessage(id, text);
        EXPECT_EQ(listener.getState(), HVProgressListener::Running) << id;
        EXPECT_EQ(listener.getMessages(), kept ? Names{text} : Names{}) << id;
    }
    listener.reset();
    listener.onMessage("only a text");
    EXPECT_TRUE(listener.getMessages().empty());
    EXPECT_EQ(listener.getState(), HVProgressListener::NotStarted);
}

TEST_F(ProgressListener, EachTextIsShownOncePerCall)
{
    HVProgressListener listener(&procedure);
    HVProgressListener interactive;
    for (const char* text : {"b", "a", "b", "", "b", "a"}) {
        listener.onMessage("W1", text);
        interactive.onMessage("W1", text);
    }
    interactive.onCancel();
    EXPECT_TRUE(display(interactive, true, true).empty());
    const Lines expected{{"b", kLevelWarning}, {"a", kLevelWarning}};
    EXPECT_EQ(display(listener, true, true), expected);
    EXPECT_EQ(display(listener, true, true), expected);
    EXPECT_EQ(listener.getMessages().size(), 6U);
    listener.reset();
    EXPECT_TRUE(display(listener, true, true).empty());
}

TEST_F(ProgressListener, EndOfAJobIsShownByItsState)
{
    using State = HVProgressListener::ExecutionState;
    const std::string terminated = "The Vexa Statistics run will terminate now.";
    const std::tuple<State, bool, bool, Lines> rows[] = {
        {State::Failed, true, false, {{"m", 2}, {"wrong", 3}}},
        {State::Failed, false, false, {{"m", 2}}},
        {State::Failed,
         true,
         true,
         {{"Split file sex = f. m", 2}, {"Split file sex = f. wrong", 2}}},
        {State::Failed, false, true, {{"Split file sex = f. m", 2}}},
        {State::Cancelled, true, false, {{"m", 2}, {terminated, 3}}},
        {State::Cancelled, false, true, {{"Split file sex = f. m", 2}, {terminated, 3}}},
        {State::Succeeded, true, false, {{"m", 2}}},
    };
    for (const auto& [state, showError, isSplit, lines] : rows) {
        source.SetSplitVars(isSplit ? std::vector<int>{1} : std::vector<int>{});
        source.SetSplitValues(isSplit ? Names{"f"} : Names{});
        HVProgressListener listener(&procedure);
        listener.onMessage("W1", "m");
        if (state == State::Failed)
            listener.onError("E1", "wrong", "detail");
        else if (state == State::Cancelled)
            listener.onCancel();
        else
            listener.onSuccess();
        EXPECT_EQ(display(listener, showError, true), lines) << state;
        // Without the label the split makes no difference.
        for (const Line& line : display(listener, showError, false))
            EXPECT_EQ(line.text.find("Split file"), std::string::npos);
    }
}

TEST_F(ProgressListener, LastCallbackDecidesAndResetForgets)
{
    HVProgressListener listener(&procedure);
    listener.onInit("id");
    EXPECT_EQ(listener.getState(), HVProgressListener::NotStarted);
    std::string id = "x";
    std::string text = "y";
    std::string detail = "z";
    EXPECT_FALSE(listener.hasError(id, text, detail));
    EXPECT_EQ(id + text + detail, "xyz");
    listener.onError("1", "2", "3");
    listener.onError("4", "5", "6");
    EXPECT_TRUE(listener.hasError(id, text, detail));
    EXPECT_EQ(id + text + detail, "456");
    listener.onSuccess();
    EXPECT_FALSE(listener.hasError(id, text, detail));
    listener.onMessage("W1", "m");
    listener.reset();
    EXPECT_EQ(listener.getState(), HVProgressListener::NotStarted);
    EXPECT_EQ(listener.getExecutionId(), "");
    EXPECT_TRUE(listener.getMessages().empty());
    listener.onError("", "", "");
    EXPECT_TRUE(listener.hasError(id, text, detail));
    EXPECT_EQ(id + text + detail, "");
}

TEST_F(ProgressListener, ProgressGoesToTheHostAsItComes)
{
    HVProgressListener interactive;
    interactive.onProgress(0.5F);
    EXPECT_EQ(interactive.getState(), HVProgressListener::Running);
    EXPECT_TRUE(journal(Kind::Progress).empty());
    HVProgressListener listener(&procedure);
    listener.onSuccess();
    for (const float fraction : {0.0F, 0.25F, 0.25F, 7.5F, -1.0F})
        listener.onProgress(fraction);
    EXPECT_EQ(listener.getState(), HVProgressListener::Running);
    std::vector<double> numbers;
    for (const auto& entry : journal(Kind::Progress))
        numbers.push_back(entry.number);
    EXPECT_EQ(numbers, (std::vector<double>{0.0, 0.25, 0.25, 7.5, -1.0}));
}

} // namespace
