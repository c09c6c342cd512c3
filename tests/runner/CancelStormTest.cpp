#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

#include "CommonBlocks.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "data/SourceRows.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "runner/StatHVServiceManager.h"
#include "support/ScratchFolder.h"
#include "support/ScriptedEngine.h"

// Jobs that are cancelled at random moments: before, within, between and after the jobs of a
// runner. HV_CANCEL_JOBS says how many there are, half of them on either engine.

namespace {

using Clock = std::chrono::steady_clock;

int jobsOfAnEngine()
{
    const char* const count = std::getenv("HV_CANCEL_JOBS");
    return (count != nullptr ? std::atoi(count) : 600) / 2;
}

/// How jobs ended.
struct Tally
{
    int succeeded = 0;
    int cancelled = 0;
    int refused = 0;
};

class CancelStorm : public ::testing::Test
{
protected:
    ~CancelStorm() override { pvGetCmnSys()->runIndicator = 0; }

    /// Runs jobs until there were enough. The moments spread over the time that the jobs of a
    /// runner took last.
    void storm(const std::string& job, const MemorySource& cases)
    {
        bool hasProcedure = false;
        while (tally.succeeded + tally.cancelled + tally.refused < jobsOfAnEngine()) {
            hasProcedure = !hasProcedure;
            const Clock::time_point begin = Clock::now();
            runJobs(hasProcedure ? &procedure : nullptr, job, cases);
            span = (3 * span + (Clock::now() - begin)) / 4;
            if (HasFailure())
                return;
        }
        EXPECT_GT(tally.succeeded, 0);
        EXPECT_GT(tally.cancelled, 0);
        EXPECT_GT(tally.refused, 0);
        RecordProperty("succeeded", tally.succeeded);
        RecordProperty("cancelled", tally.cancelled);
        RecordProperty("refused", tally.refused);
    }

private:
    /// Cancels a runner at one to three random moments, on a thread of its own.
    std::thread canceller(HVRunner& runner, std::atomic<bool>& isCancelled)
    {
        std::vector<Clock::time_point> moments;
        std::uniform_int_distribution<Clock::rep> delay(0, span.count());
        const int count = std::uniform_int_distribution(1, 3)(random);
        for (int i = 0; i < count; ++i)
            moments.push_back(Clock::now() + Clock::duration(delay(random)));
        return std::thread([&runner, &isCancelled, moments] {
            for (const Clock::time_point moment : moments) {
                while (Clock::now() < moment)
                    std::this_thread::yield();
                runner.cancelExecution();
                isCancelled = true;
            }
        });
    }

    void runJobs(TnProcedure* ofProcedure, const std::string& job, const MemorySource& cases)
    {
        constexpr int kJobs = 3;
        HVRunner runner(ofProcedure);
        std::atomic<bool> isCancelled = false;
        std::thread cancels = canceller(runner, isCancelled);
        for (int i = 0; i < kJobs; ++i) {
            SourceRows rows(cases);
            runner.prepareHVLJob(job);
            runner.addInputIterator(&rows);
            const bool wasCancelled = isCancelled;
            const bool result = runner.execute();
            if (wasCancelled) {
                EXPECT_FALSE(result);
            }
            runner.cleanExecution();
            count(runner, result);
        }
        cancels.join();
        EXPECT_TRUE(runner.isStopProcessor());
        runner.prepareHVLJob(job);
        EXPECT_FALSE(runner.execute());
    }

    void count(HVRunner& runner, bool result)
    {
        switch (runner.getProgressListener()->getState()) {
        case HVProgressListener::Succeeded:
            ++tally.succeeded;
            EXPECT_TRUE(result);
            break;
        case HVProgressListener::Cancelled:
            ++tally.cancelled;
            EXPECT_TRUE(result && runner.isStopProcessor());
            break;
        case HVProgressListener::NotStarted:
            ++tally.refused;
            EXPECT_TRUE(!result && runner.isStopProcessor());
            break;
        default:
            ADD_FAILURE() << "state " << runner.getProgressListener()->getState();
        }
    }

    ProcedureDataSource columns;
    TnProcedure procedure{"STORM", &columns};
    std::mt19937 random{20240229};
    Clock::duration span = std::chrono::milliseconds(5);
    Tally tally;
};

TEST_F(CancelStorm, JobsOfAScriptedEngine)
{
    ScriptedEngine engine;
    engine.setScript([&engine](ScriptedJob& job) {
        for (int step = 0; step < 4; ++step) {
            job.listener().onProgress(0.25F * static_cast<float>(step));
            job.message("W1", "text");
            if (job.waitForCancel(0)) {
                job.listener().onCancel();
                return;
            }
        }
        engine.clearCalls();
        job.listener().onSuccess();
    });
    const MemorySource cases({numeric("x")}, {{1.0}});
    storm("job", cases);
}

TEST_F(CancelStorm, JobsOfTheEmbeddedEngine)
{
    const ScratchFolder folder;
    const MemorySource cases({numeric("x")}, std::vector<MemorySource::Row>(3000, {1.0}));
    storm(R"(read({"dataSource": "rows"}) -> write({"dataDestination": "file://)" +
              (folder.path / "out.csv").string() +
              R"(", "dataModelDestination": "", "type": "text/csv"}))",
          cases);
    for (const auto& entry : std::filesystem::directory_iterator(folder.path))
        EXPECT_EQ(entry.path().filename(), "out.csv");
    EXPECT_EQ(folder.read("out.csv").size(),
              std::string("x\n").size() + 3000 * std::string("1.0\n").size());
    StatHVServiceManager::shutdown();
}

} // namespace
