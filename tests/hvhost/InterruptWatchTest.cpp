#include "hvhost/base/InterruptWatch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>

#include "Attention.h"
#include "EngineException.h"
#include "hvhost/base/CommandFault.h"

namespace {

/// Cannot cancel, each time for another reason.
class Failing : public VexaAdapter::InterruptHandler
{
public:
    Failing() { GetAdapter()->setInterruptHandler(this); }
    ~Failing() override
    {
        GetAdapter()->setInterruptHandler(nullptr);
        ClearAttention();
    }
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;

    void interrupt() override
    {
        const int call = calls++;
        calls.notify_all();
        switch (call) {
        case 0:
            throw EmbeddedHV::Exception("one\n\x1b[31mline");
        case 1:
            throw EmbeddedHV::JavaException("c", "two", "trace");
        case 2:
            throw std::runtime_error("three");
        case 3:
            throw 4;
        default:
            break;
        }
    }
    void await(int count) const
    {
        for (int seen = calls; seen < count; seen = calls)
            calls.wait(seen);
    }

    std::atomic<int> calls = 0;
};

TEST(InterruptWatch, ACancellationThatFailsIsToldOnceAndTriedAgain)
{
    testing::internal::CaptureStderr();
    {
        const Failing handler;
        const InterruptWatch watch(0.0);
        handler.await(5);
        EXPECT_THROW(watch.check(), CommandFault);
    }
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(told.starts_with("hvhost: warning: the job cannot be cancelled: one")) << told;
    EXPECT_EQ(told.find('\n'), told.size() - 1) << told;
    EXPECT_EQ(told.find('\x1b'), std::string::npos) << told;
}

} // namespace
