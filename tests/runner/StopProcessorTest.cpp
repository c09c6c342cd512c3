#include "runner/HVStopProcessor.h"

#include <chrono>

#include "runner/RunnerFixture.h"

namespace {

using Kind = HostJournal::Kind;
using StopProcessor = RunnerFixture;

void wait(int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

TEST_F(StopProcessor, NoLimitLeavesTheUserAlone)
{
    for (const double limit : {0.0, -1.0}) {
        const HVStopProcessor processor(limit);
        wait(5);
        EXPECT_FALSE(processor.CheckCancel()) << limit;
        RequestAttention();
        EXPECT_TRUE(processor.CheckCancel()) << limit;
        ClearAttention();
    }
}

TEST_F(StopProcessor, LimitCountsFractionsOfASecond)
{
    HVStopProcessor processor(0.3);
    EXPECT_FALSE(processor.CheckCancel());
    EXPECT_FALSE(processor.GetCancel());
    wait(320);
    HVStopProcessor copy(processor);
    EXPECT_TRUE(processor.CheckCancel());
    EXPECT_TRUE(copy.CheckCancel());
    // To look has no effect; only to ask for the end has.
    EXPECT_TRUE(journal(Kind::Error).empty());
    EXPECT_EQ(pvGetCmnSys()->runIndicator, 0);
    EXPECT_TRUE(processor.GetCancel());
    const auto lines = journal(Kind::Error);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].text, "Time out termination ...");
    EXPECT_EQ(lines[0].show, kShowInOutput);
    EXPECT_EQ(lines[0].level, kLevelError);
    EXPECT_EQ(pvGetCmnSys()->runIndicator, -1);
}

TEST_F(StopProcessor, HostMayLeaveFromHere)
{
    HVStopProcessor processor;
    const AttentionExit way;
    EXPECT_FALSE(processor.GetCancel());
    RequestAttention();
    EXPECT_THROW(processor.GetCancel(), AttentionJump);
    ClearAttention();
    HVStopProcessor late(0.001);
    wait(10);
    EXPECT_THROW(late.GetCancel(), AttentionJump);
    EXPECT_EQ(journal(Kind::Error).size(), 1U);
}

} // namespace
