#include <algorithm>

#include "CFAppHost.h"
#include "bridge/JNIObjectManager.h"
#include "runner/RunnerFixture.h"

namespace {

using Names = std::vector<std::string>;

/// The host's locale is put back after each test.
class RunnerCalls : public RunnerFixture
{
protected:
    void TearDown() override { CFAppHost::getInstance()->setLocale(""); }
};

TEST_F(RunnerCalls, AJobMakesEachCallOnceAndInOrder)
{
    CFAppHost::getInstance()->setLocale("de_DE");
    HVSimpleContainer input("in", "c:\\in");
    HVSimpleContainer output("out", "c:\\out");
    const MemorySource cases({numeric("x")}, std::vector<MemorySource::Row>(5, {1.0}));
    SourceRows rows(cases);
    int pulled = 0;
    engine.setScript([&pulled](ScriptedJob& job) {
        job.listener().onInit("job-1");
        pulled = job.pull("rows");
        job.listener().onSuccess();
    });
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
    EXPECT_EQ(engine.callNames(),
              (Names{"start(de_DE)", "createExecution(de_DE)", "prepare(read({}))",
                     "addInputContainer(in)", "addOutputContainer(out)", "addInputIterator(rows)",
                     "execute", "getOutputIterator(rows)", "getOutputIterator(none)", "dispose",
                     "delete"}));
    EXPECT_EQ(pulled, 5);
    JNIEnv* const env = JNIObjectManager::getManager()->getEnv();
    ASSERT_NE(env, nullptr);
    for (const EngineCall& call : engine.calls())
        EXPECT_TRUE(call.env == env || call.name == "createExecution" || call.name == "delete")
            << call.name;
}

TEST_F(RunnerCalls, PreparingAgainEndsTheExecutionBefore)
{
    HVRunner runner;
    engine.setScript([](ScriptedJob& job) { job.listener().onError("E", "text", "detail"); });
    runner.prepareHVLJob("first");
    runner.execute();
    CFAppHost::getInstance()->setLocale("fr_FR");
    engine.clearCalls();
    runner.prepareHVLJob("second");
    EXPECT_EQ(engine.callNames(),
              (Names{"dispose", "delete", "createExecution(fr_FR)", "prepare(second)"}));
    EXPECT_EQ(runner.getProgressListener()->getState(), HVProgressListener::NotStarted);
}

TEST_F(RunnerCalls, ResultTellsAFailureAlone)
{
    const std::pair<ScriptedEngine::Script, bool> rows[] = {
        {[](ScriptedJob& job) { job.listener().onSuccess(); }, true},
        {[](ScriptedJob& job) { job.listener().onCancel(); }, true},
        {[](ScriptedJob& job) { job.listener().onError("", "", ""); }, false},
        {[](ScriptedJob& job) { job.listener().onProgress(0.5F); }, true},
        {[](ScriptedJob&) {}, true},
    };
    HVRunner runner;
    for (const auto& [script, result] : rows) {
        engine.setScript(script);
        runner.prepareHVLJob("job");
        EXPECT_EQ(runner.execute(), result) << runner.getProgressListener()->getState();
    }
}

TEST_F(RunnerCalls, MetadataQueryEndsTheExecution)
{
    HVRunner runner;
    const HVSimpleContainer container("model", "c:\\m");
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
    JNIEnv* const here = JNIObjectManager::getManager()->getEnv();
    std::thread([&runner] {
        runner.resetJNI();
        runner.prepareHVLJob("there");
        runner.cleanExecution();
    }).join();
    for (const EngineCall& call : engine.calls())
        if (call.name == "prepare" || call.name == "dispose") {
            EXPECT_TRUE(call.env != nullptr && call.env != here) << call.name;
        }
    runner.resetJNI();
    EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), here);
}

} // namespace
