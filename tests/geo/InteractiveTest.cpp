#include <thread>

#include "EngineException.h"
#include "data/HVSimpleContainer.h"
#include "geo/GeoFixture.h"

// What all interactive objects do: they run a job, and tell why it failed.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Shows what is for the classes that derive from it.
class Dialog : public HVInteractive
{
public:
    using HVInteractive::AddMessage;
    using HVInteractive::CleanExceptions;
    using HVInteractive::CleanMessages;
    using HVInteractive::runner;
    using HVInteractive::UpdateMessageList;

    bool run()
    {
        runner().prepareHVLJob("job");
        const bool result = tryRunHV(runner());
        cleanExecution();
        return result;
    }

    /// The result of hasError in strings that are not empty before, or "-".
    std::string reason()
    {
        std::string id = "i";
        std::string text = "t";
        std::string detail = "d";
        const bool isTold = hasError(id, text, detail);
        return isTold ? id + "|" + text + "|" + detail : id + text + detail == "itd" ? "-" : "?";
    }
};

class Interactive : public JobTest
{
protected:
    ScriptedEngine engine;
    Dialog dialog;
};

void fail(ScriptedJob& job)
{
    job.listener().onError("ID", "text", "detail");
}

void failAndThrow(ScriptedJob& job)
{
    job.listener().onError("ID", "text", "detail");
    throw EmbeddedHV::Exception("thrown");
}

} // namespace

TEST_F(Interactive, TellsWhyAJobFailed)
{
    const auto succeed = [](ScriptedJob& job) { job.listener().onSuccess(); };
    const auto cancel = [](ScriptedJob& job) { job.listener().onCancel(); };
    struct FailureCase
    {
        Fault fault;
        ScriptedEngine::Script script;
        bool result;
        const char* reason;
    };
    const FailureCase cases[] = {
        {Fault::None, succeed, true, "-"},
        {Fault::Engine, succeed, false, "i|scripted|d"},
        {Fault::None, cancel, true, "-"},
        {Fault::Java, succeed, false, "i|scripted\nTrace message:\nat script|d"},
        {Fault::None, fail, false, "ID|text|detail"},
        {Fault::Standard, succeed, false, "i|unknown HV message|d"},
        {Fault::Unknown, succeed, false, "i|unknown HV message|d"},
        {Fault::None, failAndThrow, false, "ID|text|detail"},
    };
    for (const auto& [fault, script, result, reason] : cases) {
        SCOPED_TRACE(std::string(nameOf(fault)) + " " + reason);
        engine.throwAt("execute", fault);
        engine.setScript(script);
        EXPECT_EQ(dialog.run(), result);
        EXPECT_EQ(dialog.reason(), reason);
        if (fault != Fault::None) {
            dialog.CleanExceptions();
            EXPECT_EQ(dialog.reason(), "-");
        }
    }
    engine.throwAt("prepare", Fault::Java);
    EXPECT_THROW(dialog.run(), EmbeddedHV::JavaException) << "only the run is guarded";
    dialog.cleanExecution();
    EXPECT_EQ(openExecutions(engine), 0);
}

TEST_F(Interactive, AsksForADataModel)
{
    const HVSimpleContainer container("model", "c:\\model.xml");
    struct ModelCase
    {
        const char* xml;
        Fault fault;
        bool result;
        const char* reason;
    };
    const ModelCase cases[] = {
        {"<DataModel/>", Fault::None, true, "-"},
        {"", Fault::None, false, "i|unknown HV message|d"},
        {"<DataModel/>", Fault::Java, true, "-"},
    };
    for (const auto& [xml, fault, result, reason] : cases) {
        SCOPED_TRACE(reason);
        engine.setMetadata(xml);
        engine.throwAt("getMetadata", fault);
        std::string model = "before";
        EXPECT_EQ(dialog.tryGetMetadata(dialog.runner(), "job", container, model), result);
        EXPECT_EQ(model, fault == Fault::None ? xml : "") << "the empty text alone tells a fault";
        EXPECT_EQ(dialog.reason(), reason);
    }
}

TEST_F(Interactive, OwnMessagesStandInForThoseOfTheJob)
{
    engine.setScript([](ScriptedJob& job) {
        job.message("ID", "told");
        job.listener().onInit("execution 7");
        job.listener().onSuccess();
    });
    ASSERT_TRUE(dialog.run());
    EXPECT_THAT(dialog.getMessages(), ElementsAre("told"));
    EXPECT_EQ(dialog.getExecutionId(), "execution 7");
    dialog.UpdateMessageList();
    dialog.AddMessage("own");
    dialog.UpdateMessageList();
    EXPECT_THAT(dialog.getMessages(), ElementsAre("told", "own", "told"));
    dialog.CleanMessages();
    EXPECT_THAT(dialog.getMessages(), ElementsAre("told"));
    dialog.AddMessage("new");
    EXPECT_THAT(dialog.getMessages(), ElementsAre("new"));
}

TEST_F(Interactive, ACancelledObjectRunsNothingMore)
{
    engine.setScript([](ScriptedJob& job) {
        EXPECT_TRUE(job.waitForCancel());
        job.listener().onCancel();
    });
    std::thread user([this] {
        EXPECT_TRUE(engine.waitUntilRunning());
        dialog.cancelExecution();
    });
    EXPECT_TRUE(dialog.run()) << "a job that is cancelled on the way did not fail";
    user.join();
    EXPECT_EQ(dialog.getState(), HVProgressListener::Cancelled);
    EXPECT_TRUE(dialog.isStopProcessor());

    engine.clearCalls();
    EXPECT_FALSE(dialog.run());
    EXPECT_EQ(dialog.reason(), "-");
    EXPECT_THAT(engine.callNames(), testing::Not(testing::Contains("execute")));

    Dialog other;
    EXPECT_FALSE(other.isStopProcessor());
    other.cancelExecution();
    EXPECT_FALSE(other.run()) << "without a job in progress as well";
    EXPECT_TRUE(other.isStopProcessor());
}
