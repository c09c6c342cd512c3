#include "data/HVOutputIteratorFetcher.h"

#include <gmock/gmock.h>

#include <fstream>
#include <tuple>

#include "bridge/JNIHvlProgram.h"
#include "data/SourceRows.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"
#include "support/JobFixture.h"

namespace {

using Fetcher = HVOutputIteratorFetcher;
using Rows = EmbeddedHV::RowDataIterator;
using testing::ElementsAre;
using testing::IsEmpty;

class OutputFetcher : public JobTest
{
protected:
    void TearDown() override
    {
        for (const char* input : {"in.csv", "in.hvbf", "in.xml"})
            std::filesystem::remove(path(input));
        JobTest::TearDown();
    }

    static std::string path(const std::string& name)
    {
        return ExtNameStr(GetVexaTempPath() + name).GetNative();
    }
    static std::string url(const std::string& name) { return "file:///" + path(name); }

    /// Writes the CSV text as a file, and the same rows as HVBF with a data model.
    void makeInputs(const std::string& csv)
    {
        std::ofstream(path("in.csv")) << csv;
        JNIHvlProgram program;
        HVLRead read(&program);
        read.ReadCSV(url("in.csv"), false);
        HVLWrite write(&program);
        write.WriteHVBF(url("in.hvbf"));
        write.SetDataModel(url("in.xml"));
        write.AddPredFunction(&read);
        ASSERT_TRUE(write.GenerateHVL());
        std::string job;
        program.getHvlText(job);
        runner->prepareHVLJob(job);
        ASSERT_TRUE(runner->execute());
        runner->cleanExecution();
    }
};

TEST_F(OutputFetcher, GivesTheRowsOfAFile)
{
    makeInputs("a,1,x\nb,,y\n,3,\n");
    const char* const all = "'a' 1 'x'; 'b' - 'y'; - 3 -; ";
    const std::tuple<const char*, const char*, Fetcher::HVDataFileType, std::vector<std::string>,
                     const char*>
        cases[] = {
            {"in.csv", "", Fetcher::kCsv, {}, all},
            {"in.csv", "in.xml", Fetcher::kCsv, {"field1", "field2"}, "'a' 1; 'b' -; - 3; "},
            {"in.hvbf", "", Fetcher::kHvbf, {"field1"}, "'a'; 'b'; -; "},
            {"in.hvbf", "in.xml", static_cast<Fetcher::HVDataFileType>(7), {}, all},
            {"in.csv", "", Fetcher::kHvbf, {}, ""},
            {"missing.csv", "", Fetcher::kCsv, {}, ""},
            {"in.csv", "", Fetcher::kCsv, {"no such field"}, ""},
        };
    // One fetcher for all: the next fetch lets go of what the last one holds.
    Fetcher fetcher(*runner);
    for (const auto& [file, model, type, fields, content] : cases) {
        SCOPED_TRACE(std::string(file) + " " + model);
        const std::string modelPath = *model ? path(model) : "";
        Rows* const rows = fetcher.Fetch(path(file), modelPath, type, fields);
        EXPECT_EQ(rows != nullptr, *content != '\0');
        EXPECT_EQ(rows ? recordsOf(*rows) : "", content);
    }
    ASSERT_NE(fetcher.Fetch(path("in.csv"), "", Fetcher::kCsv, {}), nullptr);
    EXPECT_EQ(scratchFiles().size(), 5U) << "three inputs, and the data and data model of the rows";
    fetcher.Finalize();
    EXPECT_EQ(scratchFiles().size(), 3U);
    fetcher.Finalize();
    // The last one is left to the destructor, in the middle of its rows.
    EXPECT_EQ(fetcher.Fetch(path("in.csv"), "", Fetcher::kCsv, {})->nextRecord(),
              Rows::RecordAvailable);
    EXPECT_THAT(HostJournal::instance().entries(HostJournal::Kind::Error), IsEmpty());
}

TEST_F(OutputFetcher, ComposesAReadAndAWrite)
{
    const std::string written = R"({"dataDestination":"outitera.hvbf",)"
                                R"("dataModelDestination":"outmodel.xml","type":"hvbf"})";
    const std::tuple<Fetcher::HVDataFileType, const char*, std::vector<std::string>, std::string>
        cases[] = {
            {Fetcher::kCsv,
             "",
             {},
             R"(val f1Conf = {"filesystem":{"locations":[{"path":"file:///c:/d ir/f","parser":)"
             R"({"name":"csv","config":{"hasHeader":false}}}]}})"
             "\nval f2Conf = " +
                 written + "\nread(f1Conf) -> write(f2Conf)"},
            {Fetcher::kHvbf,
             "c:\\m.xml",
             {"b", "a"},
             R"(val f1Conf = {"filesystem":{"dataModel":"file:///c:/m.xml","locations":)"
             R"([{"path":"file:///c:/d ir/f","parser":{"name":"hvbf","config":{}}}]}})"
             "\nval f2Conf = {\"fields\":[\"b\",\"a\"]}\nval f3Conf = " +
                 written + "\nread(f1Conf) -> filterFields(f2Conf) -> write(f3Conf)"},
        };
    const ScriptedEngine engine;
    for (const auto& [type, model, fields, job] : cases) {
        Fetcher(*runner).Fetch("c:\\d ir\\f", model, type, fields);
        const std::vector<std::string> calls = engine.callNames();
        ASSERT_GE(calls.size(), 5U);
        EXPECT_THAT(std::vector<std::string>(calls.end() - 5, calls.end()),
                    ElementsAre("prepare(" + job + ")", "execute",
                                "getOutputIterator(outitera.hvbf)", "dispose", "delete"));
    }
}

// What fails leaves neither an execution nor a file, be it fetched again or destroyed.
TEST_F(OutputFetcher, LetsGoOfEverythingWhenTheEngineFails)
{
    for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown}) {
        const std::tuple<const char*, bool, bool> cases[] = {
            {"start", false, true},    {"createExecution", false, true},
            {"prepare", false, true},  {"execute", false, false},
            {"dispose", false, false}, {"getOutputIterator", false, false},
            {"dispose", true, true},
        };
        for (const auto& [call, jobFails, passes] : cases) {
            SCOPED_TRACE(std::string(nameOf(fault)) + " exception at " + call);
            ScriptedEngine engine;
            engine.throwAt(call, fault);
            // The engine writes its file and fails only then.
            engine.setScript([fails = jobFails](ScriptedJob& job) {
                std::ofstream(ExtNameStr(HVSimpleFile::GetAnalyticDefaultDir() + "outitera.hvbf")
                                  .GetNative());
                if (fails)
                    job.listener().onError("ID", "text", "");
            });
            {
                Fetcher fetcher(*runner);
                Rows* rows = nullptr;
                const auto fetch = [&] { rows = fetcher.Fetch("f", "", Fetcher::kCsv, {}); };
                if (passes)
                    EXPECT_ANY_THROW(fetch());
                else
                    EXPECT_NO_THROW(fetch());
                EXPECT_EQ(rows, nullptr);
                if (call == std::string("execute")) {
                    EXPECT_EQ(openExecutions(engine), 0) << "not only by the destructor";
                }
            }
            runner->cleanExecution();
            EXPECT_EQ(openExecutions(engine), 0);
            expectNothingLeft();
        }
    }
}

TEST_F(OutputFetcher, SurvivesEveryFailureOfTheMachine)
{
    const ScriptedEngine engine;
    expectToSurviveFailures([&] { Fetcher(*runner).Fetch("f", "m", Fetcher::kHvbf, {"a"}); });
    EXPECT_EQ(openExecutions(engine), 0);
}

} // namespace
