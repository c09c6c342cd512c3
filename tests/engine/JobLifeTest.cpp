#include "engine/ClusterMachine.h"
#include "engine/EngineFixture.h"
#include "engine/TestRows.h"

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <tuple>

#include "EngineException.h"
#include "EnginePreload.h"
#include "MetadataService.h"
#include "duckdb/DuckSession.h"
#include "runtime/Reporter.h"
#include "steps/CsvCheck.h"
#include "support/FullDisk.h"

using namespace EngineTest;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

class JobLifeTest : public EngineFixture
{
protected:
    /// A job over n.csv that runs for minutes: every record with every record.
    std::string endless(const std::string& setting = "") const
    {
        return "val a = " + readCsv("n.csv") + "val b = " + readCsv("n.csv") +
               R"(join({"joinType": "Cartesian", "outputFields": {"a": ["n"]})" + setting +
               "}, a: a, b: b) -> balanceRecords(_, c => x => 3) -> ";
    }
};

TEST_F(JobLifeTest, ARunningJobIsCancelledAtOnceAndLeavesNothing)
{
    write("n.csv", numbers(50000));
    const std::string count = R"(aggregate({"output": [{"function": "key", "input": "n"},
                                                       {"function": "count"}]}) -> )";
    const std::string ordered = endless(R"(, "keepOrder": true)");
    for (const std::string& job : {endless() + writeCsv("out.csv"), ordered + writeCsv("out.csv"),
                                   endless() + count + writeCsv("out.csv"),
                                   endless() + R"(write({"dataSource": "never"}))"}) {
        for (const auto delay : {0ms, 3ms, 150ms}) {
            RecordingListener listener;
            const auto time = cancelAfter(delay, job, listener);
            EXPECT_EQ(listener.ending, "cancel");
            EXPECT_LT(time, clusterUrl().empty() ? 1000ms : 2000ms);
            EXPECT_EQ(files(), std::vector<std::string>{"n.csv"});
        }
    }
    EXPECT_THAT(run(R"(read({"dataSource": "never"}) -> )" + writeCsv("out.csv")).errorText,
                HasSubstr("no data source"));
}

TEST_F(JobLifeTest, ACancellationBeforeTheJobCounts)
{
    write("in.csv", "a\n1\n");
    const auto execution = newExecution(readCsv("in.csv") + " -> " + writeCsv("out.csv"));
    execution->cancel(nullptr);
    RecordingListener listener;
    execution->execute(nullptr, &listener);
    EXPECT_EQ(listener.ending, "cancel");
    execution->dispose(nullptr);
    EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
}

TEST_F(JobLifeTest, ACancellationEndsTheCheckOfAFile)
{
    write("in.csv", "a\n1\n");
    EmbeddedHV::Database database;
    RecordingListener listener;
    EmbeddedHV::Cancellation cancellation;
    EmbeddedHV::Reporter reporter(listener, cancellation);
    EmbeddedHV::CsvCheckSettings settings;
    settings.path = path("in.csv");
    settings.guess = std::make_shared<EmbeddedHV::CsvProfile>(settings.path, true);
    EmbeddedHV::CsvCheck check(settings);
    cancellation.cancel();
    check.start(cancellation, [](double) {});
    EmbeddedHV::DuckSession session(database);
    check.finish(session, reporter);
    EXPECT_FALSE(settings.guess->complete());
}

TEST_F(JobLifeTest, ACancellationEndsThePlanning)
{
    write("in.csv", "a\n1\n");
    std::string chain = readCsv("in.csv");
    // Each of these steps says something when it is planned.
    for (int i = 0; i < 3; ++i)
        chain += R"( -> filterFields({"fields": ["a"], "unknown)" + std::to_string(i) + R"(": 1}))";
    const auto execution = newExecution(chain + " -> " + writeCsv("out.csv"));
    RecordingListener listener;
    listener.onCall = [&] { execution->cancel(nullptr); };
    execution->execute(nullptr, &listener);
    EXPECT_EQ(listener.ending, "cancel");
    EXPECT_EQ(listener.messages.size(), 1U);
    execution->dispose(nullptr);
}

TEST_F(JobLifeTest, SlowRowsDoNotDelayACancellation)
{
    TestRows rows("rows", {{"v", "real"}},
                  std::vector<std::vector<TestRows::Value>>(100000, {1.0}));
    std::atomic<bool> ended = false;
    rows.beforeRecord = [&](std::size_t) {
        EXPECT_FALSE(ended) << "rows are read after execute";
        std::this_thread::sleep_for(1ms);
    };
    RecordingListener listener;
    const auto time = cancelAfter(50ms, R"(read({"dataSource": "rows"}) -> )" + writeCsv("out.csv"),
                                  listener, [&](EmbeddedHV::Execution& execution) {
                                      execution.addInputIterator(nullptr, &rows, nullptr);
                                  });
    ended = true;
    EXPECT_EQ(listener.ending, "cancel");
    EXPECT_LT(time, 1000ms);
    EXPECT_TRUE(files().empty());
}

TEST_F(JobLifeTest, AListenerThatThrowsEndsTheJobAndGetsItsExceptionBack)
{
    write("n.csv", numbers(50000));
    const auto execution = newExecution(endless() + writeCsv("out.csv"));
    RecordingListener listener;
    listener.onCall = [] { throw std::runtime_error("listener"); };
    EXPECT_THROW(execution->execute(nullptr, &listener), std::runtime_error);
    EXPECT_EQ(listener.ending, "");
    execution->dispose(nullptr);
    EXPECT_EQ(files(), std::vector<std::string>{"n.csv"});
    succeeded(run(readCsv("n.csv") + " -> " + writeCsv("out.csv")));
}

TEST_F(JobLifeTest, ProgressGrowsFromStatementToStatement)
{
    write("n.csv", numbers(10));
    const auto listener = run(readCsv("n.csv") + " -> " + writeCsv("a.csv") + readCsv("n.csv") +
                              " -> " + writeCsv("b.csv"));
    EXPECT_EQ(listener.progress.back(), 1.0F);
    EXPECT_TRUE(std::count(listener.progress.begin(), listener.progress.end(), 0.5F));
}

/// The fault is empty for a success.
constexpr std::tuple<const char*, const char*, const char*> kPrograms[] = {
    {"a syntax error", "val = 3", "HVEPA0001E line 1, column 5"},
    {"a name bound twice", "val a = 1 val a = 2", "HVEPL0008E line 1, column"},
    {"a chain and a value of one name", "val a = 1 val a = IN", R"(the name "a" is bound already)"},
    {"no such chain", "val people = IN\npeopel -> OUT",
     R"(HVEPL0007E there is no chain "peopel"; did you mean "people"?)"},
    {"a value for a chain", "val a = 1\na -> OUT", R"(HVEPL0010E "a" is a value)"},
    {"a chain that uses itself",
     "val a = b -> filterFields({\"fields\": [\"n\"]})\n"
     "val b = a -> filterFields({\"fields\": [\"n\"]})\nb -> OUT",
     R"(HVEPL0009E line 1, column 9: the chain "a" uses itself)"},
    {"a ring that nothing uses", "val a = a -> filterFields({})\nIN -> OUT", "uses itself"},
    {"a step without input", "filterRecords(_, c => x => true) -> OUT",
     "HVEPL0012E filterRecords: the step has no input"},
    {"a read with input", "IN -> read({\"dataSource\": \"x\"}) -> OUT", "HVEPL0012E read"},
    {"a step behind write", "IN -> OUT -> filterFields({\"fields\": [\"n\"]})",
     "nothing can follow write"},
    {"an unknown step in a chain that nothing uses", "val a = rea({})\nIN -> OUT",
     R"(there is no step "rea"; did you mean "read"?)"},
    {"a mistake in a later statement",
     "IN -> OUT\nIN -> filterFields({\"fields\": [\"m\"]}) -> OUT", R"(no field "m")"},
    {"no such lambda", "IN -> filterRecords(_, wram) -> OUT", R"(no definition "wram")"},
    {"a lambda that is itself", "val f = g val g = f IN -> filterRecords(_, f) -> OUT",
     "leads back to itself"},
    {"settings and lambdas by name",
     "val conf = {\"fields\": list} val list = [\"n\"] val few = c => x => x.n < 3\n"
     "IN -> filterRecords(_, few) -> filterFields(conf) -> OUT",
     ""},
    {"a chain that nothing uses", "val a = read({\"dataSource\": \"nowhere\"})\nIN -> OUT", ""},
    {"a statement that writes nothing", "IN -> filterRecords(_, c => x => x.n > 3)\nIN -> OUT", ""},
};

TEST_F(JobLifeTest, ProgramsArePlannedWholeBeforeAFileIsWritten)
{
    write("n.csv", numbers(5));
    for (const auto& [what, job, fault] : kPrograms) {
        SCOPED_TRACE(what);
        std::string program = job;
        for (const auto& [mark, text] :
             {std::pair<std::string, std::string>{"IN", readCsv("n.csv")},
              {"OUT", writeCsv("out.csv")}})
            for (auto at = program.find(mark); at != std::string::npos;
                 at = program.find(mark, at + text.size()))
                program.replace(at, mark.size(), text);
        const auto listener = run(program);
        const std::string expected = fault;
        EXPECT_THAT(listener.fault(), HasSubstr(expected.empty() ? " " : expected));
        EXPECT_EQ(listener.ending, expected.empty() ? "success" : "error");
        EXPECT_EQ(files().size(), expected.empty() ? 2U : 1U);
        std::filesystem::remove(path("out.csv"));
    }
    const auto empty = succeeded(run("// nothing"));
    ASSERT_EQ(empty.messages.size(), 1U);
    EXPECT_EQ(empty.messages[0].first, "HVERT0005W");
}

TEST_F(JobLifeTest, LongChainsRun)
{
    write("n.csv", numbers(3));
    std::string chain = readCsv("n.csv");
    for (int i = 0; i < 300; ++i)
        chain += " -> reclassifyField(_, c => x => (\"n\", x.n + 1))";
    succeeded(run(chain + " -> " + writeCsv("out.csv")));
    EXPECT_EQ(read("out.csv"), "n\n300\n301\n302\n");
    for (int i = 0; i < 3000; ++i)
        chain += " -> filterRecords(_, c => x => true)";
    EXPECT_THAT(run(chain + " -> " + writeCsv("out.csv")).errorText,
                HasSubstr("more than 2000 steps"));
}

TEST_F(JobLifeTest, ContainersStandForTheirPaths)
{
    write("in.csv", "a\n1\n");
    NamedFile input("source", path("in.csv"));
    NamedFile output("result", path("out.csv"));
    succeeded(run(R"(read({"filesystem": {"locations": [{"path": "source", "parser": {"name": "csv",
            "config": {"hasHeader": true}}}]}})
            -> write({"dataDestination": "result", "type": "text/csv"}))",
                  [&](EmbeddedHV::Execution& execution) {
                      execution.addInputContainer(nullptr, &input);
                      execution.addOutputContainer(nullptr, &output);
                  }));
    EXPECT_EQ(read("out.csv"), "a\n1\n");
}

TEST_F(JobLifeTest, AFullDiskIsToldAndLeavesNothing)
{
    write("n.csv", numbers(300000));
    std::optional<FullDisk> full(100000);
    for (const char* destination :
         {R"("$DIR/out.csv", "type": "text/csv")", R"("$DIR/out.hvbf", "type": "hvbf")",
          R"("$DIR/out.sav", "type": "application/x-vexa-sav", "dataPassword": "p")"}) {
        const auto listener =
            run(readCsv("n.csv") + " -> write({\"dataDestination\": " + destination +
                ", \"dataModelDestination\": \"$DIR/m.xml\"})");
        EXPECT_EQ(listener.errorId, "HVEIO0017E") << listener.errorText << listener.errorDetail;
        EXPECT_THAT(listener.errorText, HasSubstr("/out."));
        EXPECT_EQ(files(), std::vector<std::string>{"n.csv"});
    }
    full.reset();
    succeeded(run(readCsv("n.csv") + " -> " + writeCsv("out.csv")));
}

TEST_F(JobLifeTest, JobsRunSideBySide)
{
    write("in.csv", "a\n1\n2\n");
    std::vector<std::thread> threads;
    std::atomic<int> succeeded = 0;
    std::vector<std::string> ids(4);
    for (std::size_t t = 0; t < ids.size(); ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 10; ++i) {
                const auto listener = run("val d = " + readCsv("in.csv") + "d -> " +
                                          writeCsv("a" + std::to_string(t) + ".csv") + "d -> " +
                                          writeCsv("b" + std::to_string(t) + ".csv"));
                succeeded += listener.ending == "success";
                ids[t] = listener.executionId;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(succeeded, 40);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
}

TEST_F(JobLifeTest, ADisposedExecutionRefusesWork)
{
    const auto execution = newExecution("");
    execution->dispose(nullptr);
    execution->dispose(nullptr);
    execution->cancel(nullptr);
    RecordingListener listener;
    EXPECT_THROW(execution->execute(nullptr, &listener), EmbeddedHV::Exception);
    EXPECT_THROW(execution->getOutputIterator(nullptr, "x"), EmbeddedHV::Exception);
    EXPECT_EQ(listener.executionId, "");
}

TEST_F(JobLifeTest, AListenerWithoutIdsGetsTexts)
{
    struct Plain : EmbeddedHV::ExecutionListener
    {
        void onCancel() override {}
        void onError(const std::string&, const std::string&, const std::string&) override {}
        void onInit(const std::string&) override {}
        void onMessage(const std::string& text) override { texts.push_back(text); }
        void onProgress(float) override {}
        void onSuccess() override {}
        std::vector<std::string> texts;
    };
    const auto execution = newExecution("");
    Plain listener;
    execution->execute(nullptr, &listener);
    execution->dispose(nullptr);
    ASSERT_EQ(listener.texts.size(), 1U);
}

TEST_F(JobLifeTest, MetadataOfAJobComesWithoutRunningIt)
{
    write("n.csv", numbers(3));
    EmbeddedHV::MetadataService& metadata = *service().getMetaDataService();
    const NamedFile container("model", path("model.xml"));
    void* reserved = nullptr;
    const std::string xml = metadata.getMetadata(
        nullptr,
        expanded(readCsv("n.csv") + " -> deriveField(_, c => x => (\"half\", x.n / 2)) -> " +
                 writeCsv("out.csv")),
        reserved, 0, container);
    EXPECT_THAT(xml, testing::AllOf(HasSubstr(R"(name="n")"), HasSubstr(R"(name="half")")));
    EXPECT_EQ(files(), std::vector<std::string>{"n.csv"});
    EXPECT_THROW(metadata.getMetadata(nullptr, "nonsense", reserved, 0, container),
                 EmbeddedHV::Exception);
}

TEST_F(JobLifeTest, AnEngineThatIsOpenedAheadIsAdopted)
{
    std::thread ahead([] { EmbeddedHV::preload(); });
    EmbeddedHV::EHVAppSetting settings(path("root"), "", "en_US");
    {
        EmbeddedHV::HVServiceManager second(nullptr, settings);
        EXPECT_TRUE(std::filesystem::is_directory(path("root/zor/public")));
        std::unique_ptr<EmbeddedHV::Execution> execution(
            second.getExecutionService()->createExecution("en_US"));
        write("in.csv", "a\n1\n");
        execution->prepare(nullptr, expanded(readCsv("in.csv") + " -> " + writeCsv("out.csv")));
        RecordingListener listener;
        execution->execute(nullptr, &listener);
        EXPECT_EQ(listener.ending, "success") << listener.errorText;
        execution->dispose(nullptr);
        execution.reset();
    }
    ahead.join();
    write("file", "");
    EmbeddedHV::EHVAppSetting broken(path("file") + "/root", "", "en_US");
    EXPECT_THROW(EmbeddedHV::HVServiceManager(nullptr, broken), EmbeddedHV::Exception);
}

} // namespace
