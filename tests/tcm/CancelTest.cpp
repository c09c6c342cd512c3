#include <thread>

#include "Attention.h"
#include "CommonBlocks.h"
#include "tcm/WatchedEngine.h"
#include "tcm/WorkingModel.h"

// Requests of a viewer and a training, cancelled at each moment of each of their jobs on the
// working engine.

namespace {

class Cancel : public WorkingModel
{
protected:
    using Request = std::function<bool()>;
    using Observer = std::function<void(std::size_t job, Moment)>;

    void SetUp() override
    {
        WorkingModel::SetUp();
        ASSERT_NO_FATAL_FAILURE(train(data));
        engine.emplace();
        data.addStranger(); // has a message in the middle of the preparation
        source = data.source();
        source->onCase = [this](std::size_t number) {
            if (number == 50)
                engine->jobs.observer(Moment::Record);
        };
        dataset = SvrDMDataset::Register(source);
        columns.SetColumns({"sales"});
        pvGetCmnGlb()->weight = 3;
        pvGetCmnGlb()->split = 2;
        GetAdapter()->setInterruptHandler(&handler);
    }
    void TearDown() override
    {
        SvrDMDataset::Unregister(dataset);
        GetAdapter()->setInterruptHandler(nullptr);
        pvGetCmnGlb()->weight = pvGetCmnGlb()->split = 0;
        viewer.reset();
        engine.reset();
        WorkingModel::TearDown();
    }

    /// A request of a new viewer.
    Request ask(const Request& question)
    {
        return [this, question] {
            viewer.emplace();
            stop = [this] { viewer->cancelExecution(); };
            const bool isDone = question();
            failure = isDone ? "" : reason();
            return isDone;
        };
    }

    /// Trains another model in a procedure of its own.
    bool trainAnother()
    {
        HVRunner procedureRunner(&procedure);
        procedureRunner.prepareActiveDS(columns, true, true);
        HVRawDataIterator rows(*source, std::vector<int>(), {}, true, kWeightRound, true, nullptr);
        rows.SetName("cases");
        HVTemporalTraining training(procedureRunner, &rows);
        data.configure(training);
        stop = [&] { procedureRunner.cancelExecution(); };
        const bool isDone = training.Train(folder->name("another.tcm"));
        std::string id;
        failure = isDone ? "" : "no reason";
        training.hasError(id, failure, id);
        return isDone;
    }

    bool run(const Request& request, const Observer& observer)
    {
        WatchedJobs& jobs = engine->jobs;
        jobs.texts.clear();
        jobs.executed = jobs.cancelled = 0;
        jobs.observer = [&](Moment moment) { observer(jobs.texts.size() - 1, moment); };
        const bool isDone = request();
        jobs.observer = [](Moment) {};
        pvGetCmnSys()->runIndicator = 0;
        EXPECT_EQ(jobs.open, 0);
        EXPECT_EQ(jni().liveGlobals(), 0);
        // Both models are in the folder.
        EXPECT_EQ(scratchFiles().size(), folder->has("another.tcm") ? 2U : 1U);
        EXPECT_EQ(pvGetCmnGlb()->weight, 3);
        EXPECT_EQ(pvGetCmnGlb()->split, 2);
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), &handler);
        return isDone;
    }

    /// Cancels at a moment of a job. No later job may run.
    void cancelAt(Moment moment, std::size_t job, const Request& request, bool isLastJob)
    {
        bool isReached = false;
        const bool isDone = run(request, [&](std::size_t number, Moment now) {
            if (number != job || now != moment || std::exchange(isReached, true))
                return;
            if (now == Moment::Started)
                std::thread(stop).join();
            else
                stop();
        });
        EXPECT_TRUE(isReached);
        const bool isInTheMiddle = moment != Moment::Prepared && moment != Moment::Ended;
        EXPECT_EQ(isDone, moment == Moment::Ended && isLastJob);
        EXPECT_EQ(engine->jobs.executed, static_cast<int>(job) + (moment != Moment::Prepared));
        EXPECT_EQ(engine->jobs.cancelled, isInTheMiddle ? 1 : 0);
        EXPECT_EQ(failure, isDone ? "" : "no reason") << "a cancel is not an error";
    }

    struct Handler : VexaAdapter::InterruptHandler
    {
        void interrupt() override {}
    } handler;
    MonthlyData data{TimeKind::Text, {"country", "region"}, 72};
    std::shared_ptr<MemorySource> source;
    LocallyUniqueID dataset = kNoDataset;
    std::optional<WatchedEngine> engine;
    std::function<void()> stop; ///< cancels the request that runs
    std::string failure;        ///< of the last request
};

/// A job by its step, and which moments it has that not every job has.
struct CancelJob
{
    const char* step;
    std::vector<Moment> moments;
};

} // namespace

TEST_F(Cancel, EndsARequestAtEachMomentOfEachJob)
{
    const std::vector<CancelJob> preparation = {
        {"descriptives:", {Moment::Record}},
        {"read(readerConf)->write(writerConf)", {Moment::Record}},
        {"reclassifyField", {}},
        {"tsdp:tsdp", {Moment::Message}},
    };
    const auto with = [&preparation](const CancelJob& last) {
        std::vector<CancelJob> jobs = preparation;
        jobs.push_back(last);
        return jobs;
    };
    const std::vector<std::string> dimensions = {"country", "region"};
    const std::vector<std::string> south = {"all", "s"};
    std::vector<double> values;
    HVSeriesForecast forecast;
    std::string text;
    struct
    {
        const char* name;
        std::vector<CancelJob> jobs;
        Request run;
    } const cases[] = {
        {"GetScenarioInfo", with({"tcm:score", {}}), ask([&] {
             return viewer->GetScenarioInfo(dataset, path, "month", "0", "2", {}, {}, {}, "sales",
                                            dimensions, south, values, values);
         })},
        // A message says that nothing depends on the given value.
        {"getForecast", with({"tcm:score", {Moment::Message}}), ask([&] {
             return viewer->getForecast(dataset, path, "sales", dimensions, south,
                                        {2, 0.9, {{{"all", "north-1", "sales"}, 1, 5, false}}},
                                        forecast);
         })},
        {"getImpactDiagram", with({"OutputComponent:", {}}), ask([&] {
             return viewer->getImpactDiagram(dataset, path, "sales", dimensions, south, false, 2,
                                             text);
         })},
        {"getModelStatistics", {{"OutputComponent:", {}}}, ask([&] {
             return viewer->getModelStatistics(kNoDataset, path, dimensions, R"([{"name":"fit"}])",
                                               text);
         })},
        {"getModelCapabilities", {{"scoring:scoring", {}}}, ask([&] {
             return viewer->getModelCapabilities(path, text, text, text, text, text, text);
         })},
        {"getGatingInfo", {{"descriptives:", {Moment::Record}}}, ask([&] {
             return viewer->getGatingInfo(dataset, "", "", {"region"}, 100, text, text);
         })},
        {"Train", {{"tcm:train", {Moment::Record}}}, [&] { return trainAnother(); }},
    };
    for (const auto& [name, jobs, request] : cases) {
        SCOPED_TRACE(name);
        const auto expectDone = [&, &request = request, &jobs = jobs] {
            EXPECT_TRUE(run(request, [](std::size_t, Moment) {})) << failure;
            ASSERT_EQ(engine->jobs.texts.size(), jobs.size());
        };
        ASSERT_NO_FATAL_FAILURE(expectDone());
        for (std::size_t job = 0; job < jobs.size(); ++job) {
            EXPECT_THAT(engine->jobs.texts[job], testing::HasSubstr(jobs[job].step));
            std::vector<Moment> moments = {Moment::Prepared, Moment::Started, Moment::Ended};
            moments.insert(moments.end(), jobs[job].moments.begin(), jobs[job].moments.end());
            for (const Moment moment : moments) {
                SCOPED_TRACE(std::to_string(job) + ", moment " +
                             std::to_string(static_cast<int>(moment)));
                std::filesystem::remove(folder->path / "another.tcm");
                cancelAt(moment, job, request, job + 1 == jobs.size());
            }
            ASSERT_NO_FATAL_FAILURE(expectDone());
        }
    }
}
