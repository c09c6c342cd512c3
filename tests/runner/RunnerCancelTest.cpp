#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

#include "VexaJVM.h"
#include "bridge/JNIObjectManager.h"
#include "runner/RunnerFixture.h"

namespace {

class RunnerCancel : public RunnerFixture
{
protected:
    RunnerCancel()
    {
        engine.setScript([](ScriptedJob& job) {
            job.listener().onProgress(0.25F);
            job.message("W1", "before the end");
            if (job.waitForCancel())
                job.listener().onCancel();
        });
    }

    /// Runs a prepared job while `stop` is called on a thread of its own, once the job is under
    /// way.
    template <typename Stop>
    bool executeAndStop(HVRunner& runner, Stop stop)
    {
        std::thread stopper([this, &stop] {
            if (engine.waitUntilRunning())
                stop();
            else
                ADD_FAILURE() << "the job never ran";
        });
        const bool result = runner.execute();
        stopper.join();
        return result;
    }
    std::vector<EngineCall> cancels() const
    {
        std::vector<EngineCall> result;
        for (const EngineCall& call : engine.calls())
            if (call.name == "cancel")
                result.push_back(call);
        return result;
    }
    static std::int64_t runIndicator() { return pvGetCmnSys()->runIndicator; }
};

bool isAttached()
{
    void* env = nullptr;
    return VexaJVM::GetInstance()->GetJavaVM()->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK;
}

TEST_F(RunnerCancel, UsersInterruptEndsTheJobOfAProcedure)
{
    HVRunner runner(&procedure);
    JNIEnv* const managerEnv = JNIObjectManager::getManager()->getEnv();
    runner.prepareHVLJob("job");
    bool attachedAfterwards = true;
    EXPECT_TRUE(executeAndStop(runner, [&attachedAfterwards] {
        GetAdapter()->interrupt();
        attachedAfterwards = isAttached();
    }));
    EXPECT_FALSE(attachedAfterwards);
    EXPECT_EQ(GetAdapter()->getInterruptHandler(), nullptr);
    EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), managerEnv);
    ASSERT_EQ(cancels().size(), 1U);
    EXPECT_NE(cancels()[0].env, nullptr);
    EXPECT_NE(cancels()[0].env, managerEnv);
    EXPECT_NE(cancels()[0].thread, std::this_thread::get_id());
    EXPECT_EQ(runner.getProgressListener()->getState(), HVProgressListener::Cancelled);
    EXPECT_TRUE(runner.isStopProcessor());
    EXPECT_EQ(runIndicator(), -1);

    runner.displayAllMessages(false, true);
    EXPECT_EQ(journalTexts(HostJournal::Kind::Error),
              (std::vector<std::string>{"before the end",
                                        "The Vexa Statistics run will terminate now."}));
}

TEST_F(RunnerCancel, OnlyAProcedureRunsAgainAfterAReset)
{
    HVRunner ofProcedure(&procedure);
    HVRunner ofDialog;
    for (HVRunner* runner : {&ofDialog, &ofProcedure}) {
        const bool again = runner == &ofProcedure;
        runner->prepareHVLJob("job");
        EXPECT_TRUE(executeAndStop(*runner, [runner] { runner->cancelExecution(); }));
        EXPECT_EQ(runIndicator(), again ? -1 : 0);
        runner->prepareHVLJob("next");
        engine.clearCalls();
        EXPECT_FALSE(runner->execute());
        EXPECT_TRUE(engine.calls().empty());
        runner->resetStopRrocessor();
        EXPECT_EQ(runner->isStopProcessor(), !again);
    }
    engine.setScript([](ScriptedJob& job) { job.listener().onSuccess(); });
    EXPECT_TRUE(ofProcedure.execute());
    EXPECT_FALSE(ofDialog.execute());
}

TEST_F(RunnerCancel, WithoutAnExecutionTheEngineIsNotAsked)
{
    HVRunner runner(&procedure);
    bool attached = true;
    std::thread([&runner, &attached] {
        runner.cancelExecution();
        attached = isAttached();
    }).join();
    EXPECT_FALSE(attached);
    EXPECT_TRUE(cancels().empty());
    EXPECT_EQ(runIndicator(), -1);
    EXPECT_TRUE(runner.isStopProcessor());
}

TEST_F(RunnerCancel, EnginesExceptionPassesAndNothingElseHappens)
{
    HVRunner runner(&procedure);
    runner.prepareHVLJob("job");
    engine.throwAt("cancel", Fault::Standard);
    bool attached = true;
    std::thread([&runner, &attached] {
        EXPECT_THROW(runner.cancelExecution(), std::runtime_error);
        attached = isAttached();
    }).join();
    EXPECT_FALSE(attached);
    EXPECT_FALSE(runner.isStopProcessor());
    EXPECT_EQ(runIndicator(), 0);
    // On the runner's own thread the attachment that was there stays.
    EXPECT_THROW(runner.cancelExecution(), std::runtime_error);
    EXPECT_TRUE(isAttached());
}

TEST_F(RunnerCancel, WhatEndsAnExecutionWaitsForACancelUnderWay)
{
    using Ending = std::function<void(std::optional<HVRunner>&)>;
    const std::pair<const char*, Ending> rows[] = {
        {"cleanExecution", [](auto& runner) { runner->cleanExecution(); }},
        {"prepareHVLJob", [](auto& runner) { runner->prepareHVLJob("next"); }},
        {"question",
         [](auto& runner) {
             std::vector<std::string> names;
             runner->getGeographics(names);
         }},
        {"destructor", [](auto& runner) { runner.reset(); }},
    };
    for (const auto& [what, end] : rows) {
        SCOPED_TRACE(what);
        std::optional<HVRunner> runner(std::in_place, &procedure);
        runner->prepareHVLJob("job");
        std::atomic<bool> entered = false;
        std::atomic<bool> left = false;
        engine.onCall("cancel", [&] {
            entered = true;
            entered.notify_all();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            left = true;
        });
        engine.clearCalls();
        std::thread canceller([&runner] { runner->cancelExecution(); });
        entered.wait(false);
        end(runner);
        EXPECT_TRUE(left);
        EXPECT_EQ(runIndicator(), -1) << "the cancel is over";
        canceller.join();
        const std::vector<std::string> calls = engine.callNames();
        ASSERT_GE(calls.size(), 3U);
        EXPECT_EQ(std::vector(calls.begin(), calls.begin() + 3),
                  (std::vector<std::string>{"cancel", "dispose", "delete"}));
        pvGetCmnSys()->runIndicator = 0;
    }
}

TEST_F(RunnerCancel, EngineMayCallBackFromItsCancel)
{
    using Call = std::function<void(HVRunner&)>;
    const std::pair<const char*, Call> rows[] = {
        {"the listener",
         [](HVRunner& runner) {
             runner.getProgressListener()->onProgress(0.5F);
             runner.getProgressListener()->onCancel();
         }},
        {"another cancel", [](HVRunner& runner) { runner.cancelExecution(); }},
        {"the interrupt of the host", [](HVRunner&) { GetAdapter()->interrupt(); }},
        {"cleanExecution", [](HVRunner& runner) { runner.cleanExecution(); }},
        {"the next job", [](HVRunner& runner) { runner.prepareHVLJob("next"); }},
    };
    for (const auto& [what, call] : rows) {
        SCOPED_TRACE(what);
        HVRunner runner(&procedure);
        runner.prepareHVLJob("job");
        engine.clearCalls();
        int depth = 0;
        engine.onCall("cancel", [&, callBack = call] {
            if (depth++ == 0)
                callBack(runner);
            EXPECT_NE(engine.callNames().back(), "delete") << "the execution is in its cancel";
        });
        runner.cancelExecution();
        EXPECT_TRUE(runner.isStopProcessor());
        EXPECT_FALSE(runner.execute());
    }
}

TEST_F(RunnerCancel, ACancelWhileTheTextIsTakenStopsTheJobOnly)
{
    HVRunner runner(&procedure);
    engine.onCall("prepare", [&runner] { std::thread([&] { runner.cancelExecution(); }).join(); });
    runner.prepareHVLJob("job");
    EXPECT_TRUE(cancels().empty());
    EXPECT_FALSE(runner.execute());
    EXPECT_NE(engine.callNames().back(), "execute");
}

} // namespace
