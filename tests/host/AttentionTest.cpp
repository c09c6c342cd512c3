#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "Attention.h"
#include "CommonBlocks.h"
#include "Journal.h"

namespace {

/// Counts interrupts; a call after its end would be a use of freed memory.
class CountingHandler final : public VexaAdapter::InterruptHandler
{
public:
    explicit CountingHandler(std::atomic<int>& calls) : _calls(calls) {}
    ~CountingHandler() override { _alive = false; }
    void interrupt() override
    {
        EXPECT_TRUE(_alive);
        ++_calls;
    }

private:
    std::atomic<int>& _calls;
    std::atomic<bool> _alive = true;
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
    int flag = 5;
    ATNCHK(&flag);
    EXPECT_EQ(flag, 0);
    RequestAttention();
    ATNCHK(&flag);
    EXPECT_NE(flag, 0);
    ClearAttention();
    ATNCHK(&flag);
    EXPECT_EQ(flag, 0);
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
    std::atomic<int> calls = 0;
    CountingHandler handler(calls);
    GetAdapter()->setInterruptHandler(&handler);
    EXPECT_EQ(GetAdapter()->getInterruptHandler(), &handler);
    GetAdapter()->interrupt();
    GetAdapter()->setInterruptHandler(nullptr);
    GetAdapter()->interrupt();
    EXPECT_EQ(calls, 1);
    int flag = 0;
    ATNCHK(&flag);
    EXPECT_NE(flag, 0);

    std::string told;
    for (const auto& entry : HostJournal::instance().entries(HostJournal::Kind::Interrupt))
        told += entry.text + " ";
    EXPECT_EQ(told, "set fire clear fire ");
}

TEST_F(AttentionTest, AHandlerThatIsTakenOutIsNeverCalledAfterwards)
{
    std::atomic<int> calls = 0;
    std::atomic<bool> done = false;
    std::thread user([&] {
        while (!done)
            GetAdapter()->interrupt();
    });
    for (int job = 0; job < 200; ++job) {
        const auto handler = std::make_unique<CountingHandler>(calls);
        VexaAdapter::InterruptHandler* before = GetAdapter()->getInterruptHandler();
        GetAdapter()->setInterruptHandler(handler.get());
        const int seen = calls;
        while (job % 20 == 0 && calls == seen)
            std::this_thread::yield();
        GetAdapter()->setInterruptHandler(before);
    }
    done = true;
    user.join();
    EXPECT_GE(calls, 10);
}

TEST_F(AttentionTest, TakingAHandlerOutWaitsForItsCall)
{
    struct SlowHandler final : VexaAdapter::InterruptHandler
    {
        std::atomic<bool> entered = false;
        std::atomic<bool> left = false;
        void interrupt() override
        {
            entered = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            left = true;
        }
    } handler;
    GetAdapter()->setInterruptHandler(&handler);
    std::thread user([] { GetAdapter()->interrupt(); });
    while (!handler.entered)
        std::this_thread::yield();
    GetAdapter()->setInterruptHandler(nullptr);
    EXPECT_TRUE(handler.left);
    user.join();
}
