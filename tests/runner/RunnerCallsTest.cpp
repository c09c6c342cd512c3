#include "CFAppHost.h"
#include "bridge/JNIObjectManager.h"
#include "runner/RunnerFixture.h"

namespace {

using Names = std::vector<std::string>;
using RunnerCalls = RunnerFixture;

TEST_F(RunnerCalls, AJobMakesEachCallOnceAndInOrder)
{
    CFAppHost::getInstance()->setLocale("de_DE");
    NamedContainer input("in");
    NamedContainer output("out");
    CountedRows rows("rows", 5);
    int pulled = 0;
    engine.setScript([&pulled](ScriptedJob& job) {
        job.listener().onInit("job-1");
        pulled = job.pull("rows");
        job.listener().onSuccess();
    });
    {
        HVRunner runner;
        EXPECT_TRUE(engine.calls().empty());
        EXPECT_TRUE(runner.prepareHVLJob("read({})"));
        EXPECT_TRUE(runner.addInputContainer(&input));
        EXPECT_TRUE(runner.addOutputContainer(&output));
        EXPECT_TRUE(runner.addInputIterator(&rows));
        EXPECT_TRUE(runner.execute());
        EXPECT_EQ(runner.getOutputIterator("rows"), &rows);
        EXPECT_EQ(runner.getOutputIterator("none"), nullptr);
        EXPECT_EQ(runner.getProgressListener()->getExecutionId(), "job-1");
        runner.cleanExecution();
        runner.cleanExecution();
        runner.displayMessage();
        EXPECT_TRUE(runner.displayOutputs());
        EXPECT_NE(runner.getParserMessage(), nullptr);
    }
    EXPECT_EQ(engine.callNames(),
              (Names{"start(de_DE)", "createExecution(de_DE)", "prepare(read({}))",
                     "addInputContainer(in)", "addOutputContainer(out)", "addInputIterator(rows)",
                     "execute", "getOutputIterator(rows)", "getOutputIterator(none)", "dispose",
                     "delete"}));
    EXPECT_EQ(pulled, 5);
    CFAppHost::getInstance()->setLocale("");
}

TEST_F(RunnerCalls, EveryCallGetsTheManagersEnvironment)
{
    HVRunner runner;
    JNIEnv* const env = JNIObjectManager::getManager()->getEnv();
    ASSERT_NE(env, nullptr);
    NamedContainer container("c");
    CountedRows rows("rows", 0);
    runner.prepareHVLJob("job");
    runner.addInputContainer(&container);
    runner.addOutputContainer(&container);
    runner.addInputIterator(&rows);
    runner.execute();
    runner.getOutputIterator("x");
    runner.cleanExecution();
    for (const EngineCall& call : engine.calls()) {
        if (call.name != "createExecution" && call.name != "delete") {
            EXPECT_EQ(call.env, env) << call.name;
        }
    }
}

TEST_F(RunnerCalls, PreparingAgainEndsTheExecutionBefore)
{
    HVRunner runner;
    CFAppHost::getInstance()->setLocale("en_US");
    engine.setScript([](ScriptedJob& job) { job.listener().onError("E", "text", "detail"); });
    runner.prepareHVLJob("first");
    EXPECT_FALSE(runner.execute());
    EXPECT_EQ(runner.getProgressListener()->getState(), HVProgressListener::Failed);
    CFAppHost::getInstance()->setLocale("fr_FR");
    engine.clearCalls();
    runner.prepareHVLJob("second");
    EXPECT_EQ(engine.callNames(),
              (Names{"dispose", "delete", "createExecution(fr_FR)", "prepare(second)"}));
    EXPECT_EQ(runner.getProgressListener()->getState(), HVProgressListener::NotStarted);
    CFAppHost::getInstance()->setLocale("");
}

TEST_F(RunnerCalls, ResultTellsAFailureAlone)
{
    using Script = ScriptedEngine::Script;
    const struct
    {
        Script script;
        bool result;
        HVProgressListener::ExecutionState state;
    } rows[] = {
        {[](ScriptedJob& job) { job.listener().onSuccess(); }, true, HVProgressListener::Succeeded},
        {[](ScriptedJob& job) { job.listener().onCancel(); }, true, HVProgressListener::Cancelled},
        {[](ScriptedJob& job) { job.listener().onError("", "", ""); }, false,
         HVProgressListener::Failed},
        {[](ScriptedJob& job) { job.listener().onProgress(0.5F); }, true,
         HVProgressListener::Running},
        {[](ScriptedJob&) {}, true, HVProgressListener::NotStarted},
    };
    HVRunner runner;
    for (const auto& row : rows) {
        engine.setScript(row.script);
        runner.prepareHVLJob("job");
        EXPECT_EQ(runner.execute(), row.result) << row.state;
        EXPECT_EQ(runner.getProgressListener()->getState(), row.state);
    }
}

TEST_F(RunnerCalls, MetadataQueryEndsTheExecution)
{
    HVRunner runner;
    const NamedContainer container("model");
    std::string metadata;
    runner.prepareHVLJob("job");
    engine.clearCalls();
    EXPECT_TRUE(runner.getMetadata("query", container, metadata));
    EXPECT_EQ(metadata, "<DataModel/>");
    EXPECT_EQ(engine.callNames(), (Names{"dispose", "delete", "getMetadata(query;model)"}));
    engine.setMetadata("");
    EXPECT_FALSE(runner.getMetadata("query", container, metadata));
    EXPECT_EQ(metadata, "");
}

TEST_F(RunnerCalls, AnotherThreadTakesOverWithItsOwnEnvironment)
{
    HVRunner runner;
    runner.prepareHVLJob("here");
    runner.cleanExecution();
    JNIEnv* const here = JNIObjectManager::getManager()->getEnv();
    std::thread([&runner] {
        runner.resetJNI();
        runner.prepareHVLJob("there");
        runner.cleanExecution();
    }).join();
    const std::vector<EngineCall> calls = engine.calls();
    const auto there = std::find_if(calls.begin(), calls.end(), [](const EngineCall& call) {
        return call.argument == "there";
    });
    ASSERT_NE(there, calls.end());
    EXPECT_NE(there->env, here);
    EXPECT_NE(there->env, nullptr);
    runner.resetJNI();
    EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), here);
}

} // namespace
