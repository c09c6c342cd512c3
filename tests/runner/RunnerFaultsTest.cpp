#include <algorithm>
#include <stdexcept>

#include "EngineException.h"
#include "runner/RunnerFixture.h"

namespace {

using RunnerFaults = RunnerFixture;

constexpr Fault kFaults[] = {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown};

/// The kind of what an action throws.
template <typename Action>
Fault faultOf(Action action)
{
    try {
        action();
    } catch (const EmbeddedHV::JavaException&) {
        return Fault::Java;
    } catch (const EmbeddedHV::Exception&) {
        return Fault::Engine;
    } catch (const std::runtime_error&) {
        return Fault::Standard;
    } catch (...) {
        return Fault::Unknown;
    }
    return Fault::None;
}

void runWholeJob(HVRunner& runner)
{
    HVSimpleContainer container("c", "c:\\c");
    const MemorySource cases({numeric("x")}, {{1.0}});
    SourceRows rows(cases);
    runner.prepareHVLJob("job");
    runner.addInputContainer(&container);
    runner.addOutputContainer(&container);
    runner.addInputIterator(&rows);
    runner.execute();
    runner.cleanExecution();
}

TEST_F(RunnerFaults, EngineExceptionsPassFromEveryCall)
{
    for (const char* call : {"createExecution", "prepare", "addInputContainer",
                             "addOutputContainer", "addInputIterator", "execute", "dispose"}) {
        for (const Fault fault : kFaults) {
            SCOPED_TRACE(std::string(call) + ", " + nameOf(fault));
            HVRunner runner(&procedure);
            runner.prepareActiveDS(source, true, true);
            engine.throwAt(call, fault);
            EXPECT_EQ(faultOf([&runner] { runWholeJob(runner); }), fault);
            engine.throwAt(call, Fault::None);
            EXPECT_EQ(faultOf([&runner] { runWholeJob(runner); }), Fault::None);
        }
    }
    const std::vector<std::string> calls = engine.callNames();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "prepare(job)"),
              std::count(calls.begin(), calls.end(), "delete"));
}

TEST_F(RunnerFaults, QueriesAnswerWithNothing)
{
    const HVSimpleContainer container("model", "c:\\m");
    for (const Fault fault : kFaults) {
        SCOPED_TRACE(nameOf(fault));
        HVRunner runner;
        engine.throwAt("getOutputIterator", fault);
        runner.prepareHVLJob("job");
        EXPECT_EQ(runner.getOutputIterator("file"), nullptr);
        for (const char* call : {"dispose", "getMetadata"}) {
            engine.throwAt(call, fault);
            std::string metadata = "earlier";
            EXPECT_TRUE(runner.getMetadata("job", container, metadata)) << call;
            EXPECT_EQ(metadata, "") << call;
            engine.throwAt(call, Fault::None);
        }
    }
}

TEST_F(RunnerFaults, DestructorIsQuietAboutAnEngineThatThrows)
{
    for (const Fault fault : kFaults) {
        engine.throwAt("dispose", fault);
        HVRunner runner(&procedure);
        runner.prepareActiveDS(source, true, true);
        runner.prepareHVLJob("job");
    }
    EXPECT_EQ(engine.callNames().back(), "delete");
}

TEST_F(RunnerFaults, EngineThatDoesNotStartIsTriedAgain)
{
    HVRunner runner;
    for (const Fault fault : kFaults) {
        engine.throwAt("start", fault);
        EXPECT_EQ(faultOf([&runner] { runner.prepareHVLJob("job"); }), fault) << nameOf(fault);
    }
    engine.throwAt("start", Fault::None);
    EXPECT_TRUE(runner.prepareHVLJob("job"));
    EXPECT_EQ(engine.starts().size(), 1U);
}

} // namespace
