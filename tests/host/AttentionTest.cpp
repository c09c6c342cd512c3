#include "Attention.h"

#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "CommonBlocks.h"
#include "support/JournalTexts.h"

namespace {

int attentionFlag()
{
    int flag = 5;
    ATNCHK(&flag);
    return flag;
}

/// Counts its calls, each of which takes a while.
class CountingHandler final : public VexaAdapter::InterruptHandler
{
public:
    void interrupt() override
    {
        ++entered;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        ++left;
    }
    std::atomic<int> entered = 0;
    std::atomic<int> left = 0;
};

class AttentionTest : public testing::Test
{
protected:
    void SetUp() override { HostJournal::instance().clear(); }
    void TearDown() override
    {
        ClearAttention();
        pvGetCmnSys()->runIndicator = 0;
        GetAdapter()->setInterruptHandler(nullptr);
    }
};

} // namespace

TEST_F(AttentionTest, TheFlagTellsWhetherAStopWasAskedFor)
{
    EXPECT_EQ(attentionFlag(), 0);
    RequestAttention();
    EXPECT_NE(attentionFlag(), 0);
    ClearAttention();
    EXPECT_EQ(attentionFlag(), 0);
    ATNCHK(nullptr);
}

TEST_F(AttentionTest, TheJumpLeavesOnlyWithAWayOutAndAReason)
{
    EXPECT_EQ(Workspace(), Workspace());
    RequestAttention();
    EXPECT_NO_THROW(ATNJMP(Workspace()));
    {
        const AttentionExit exit;
        EXPECT_THROW(ATNJMP(Workspace()), AttentionJump);
        ClearAttention();
        EXPECT_NO_THROW(ATNJMP(Workspace()));
        {
            const AttentionExit inner;
        }
        pvGetCmnSys()->runIndicator = -1;
        EXPECT_THROW(ATNJMP(Workspace()), AttentionJump);
        // The way out belongs to its thread.
        std::thread([] { EXPECT_NO_THROW(ATNJMP(Workspace())); }).join();
    }
    EXPECT_NO_THROW(ATNJMP(Workspace()));
}

TEST_F(AttentionTest, AnInterruptMarksTheAttentionAndCallsTheHandlerInForce)
{
    CountingHandler handler;
    GetAdapter()->setInterruptHandler(&handler);
    EXPECT_EQ(GetAdapter()->getInterruptHandler(), &handler);
    GetAdapter()->interrupt();
    GetAdapter()->setInterruptHandler(nullptr);
    GetAdapter()->interrupt();
    EXPECT_EQ(handler.left, 1);
    EXPECT_NE(attentionFlag(), 0);

    EXPECT_EQ(journalTexts(HostJournal::Kind::Interrupt),
              (std::vector<std::string>{"set", "fire", "clear", "fire"}));
}

TEST_F(AttentionTest, AHandlerThatIsTakenOutIsInNoCallAndGetsNone)
{
    std::atomic<bool> done = false;
    std::thread user([&done] {
        while (!done)
            GetAdapter()->interrupt();
    });
    for (int job = 0; job < 100; ++job) {
        const auto handler = std::make_unique<CountingHandler>();
        GetAdapter()->setInterruptHandler(handler.get());
        while (job % 10 == 0 && handler->entered == 0)
            std::this_thread::yield();
        GetAdapter()->setInterruptHandler(nullptr);
        EXPECT_EQ(handler->entered, handler->left);
    }
    done = true;
    user.join();
}
