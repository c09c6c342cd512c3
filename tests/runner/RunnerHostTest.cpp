#include "runner/RunnerFixture.h"

namespace {

using Kind = HostJournal::Kind;
using Names = std::vector<std::string>;
using RunnerHost = RunnerFixture;

TEST_F(RunnerHost, WeightAndSplitAreOffWhileTheRunnerLives)
{
    const struct
    {
        std::int64_t weight;
        std::int64_t split;
        bool supportsWeight;
        bool supportsSplit;
        Names notes;
    } rows[] = {
        {3, 2, true, true, {}},
        {3, 2, false, true, {"DisableWeight"}},
        {3, 2, true, false, {"DisableSplit"}},
        {3, 2, false, false, {"DisableWeight", "DisableSplit"}},
        {0, 0, false, false, {}},
        {3, 0, false, false, {"DisableWeight"}},
    };
    for (const auto& row : rows) {
        HostJournal::instance().clear();
        pvGetCmnGlb()->weight = row.weight;
        pvGetCmnGlb()->split = row.split;
        source.SetSplitEndCheck(true);
        {
            HVRunner runner(&procedure);
            EXPECT_TRUE(runner.prepareActiveDS(source, row.supportsWeight, row.supportsSplit));
            EXPECT_EQ(pvGetCmnGlb()->weight, 0);
            EXPECT_EQ(pvGetCmnGlb()->split, 0);
            EXPECT_FALSE(source.SplitEndCheck());
        }
        EXPECT_EQ(texts(Kind::Note), row.notes);
        EXPECT_EQ(pvGetCmnGlb()->weight, row.weight);
        EXPECT_EQ(pvGetCmnGlb()->split, row.split);
    }
    expectedSplit = 0;
    EXPECT_EQ(source.GetMeasurementLevel(0), MeasurementLevel::Scale);
}

TEST_F(RunnerHost, SettingThatWasNotInForceIsNotGivenBack)
{
    for (const std::int64_t found : {0, -1}) {
        pvGetCmnGlb()->weight = found;
        {
            HVRunner runner(&procedure);
            runner.prepareActiveDS(source, false, true);
            EXPECT_TRUE(texts(Kind::Note).empty());
            // The host may choose another weight meanwhile.
            pvGetCmnGlb()->weight = 7;
        }
        EXPECT_EQ(pvGetCmnGlb()->weight, 7) << found;
    }
    expectedWeight = 7;
}

TEST_F(RunnerHost, SourceWithoutColumnsIsLeftAlone)
{
    source.SetColumns({});
    source.SetSplitEndCheck(true);
    HVRunner runner(&procedure);
    EXPECT_TRUE(runner.prepareActiveDS(source, false, false));
    EXPECT_EQ(pvGetCmnGlb()->weight, 3);
    EXPECT_EQ(pvGetCmnGlb()->split, 2);
    EXPECT_TRUE(source.SplitEndCheck());
    EXPECT_TRUE(texts(Kind::Note).empty());
    pvGetCmnGlb()->weight = 5;
    expectedWeight = 5;
}

TEST_F(RunnerHost, AdapterHoldsTheRunnersHandlerDuringAJob)
{
    VexaAdapter::InterruptHandler* during = nullptr;
    engine.setScript([&during](ScriptedJob& job) {
        during = GetAdapter()->getInterruptHandler();
        job.listener().onSuccess();
    });
    {
        HVRunner runner(&procedure);
        runner.prepareHVLJob("job");
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), nullptr);
        runner.execute();
    }
    EXPECT_NE(during, nullptr);
    EXPECT_EQ(texts(Kind::Interrupt), (Names{"set", "clear"}));
    HVRunner runner;
    runner.prepareHVLJob("job");
    runner.execute();
    EXPECT_EQ(during, nullptr);
}

TEST_F(RunnerHost, MessagesOfAProcedureReachTheOutput)
{
    engine.setScript([](ScriptedJob& job) {
        job.message("W1", "a warning");
        job.listener().onError("E1", "the error", "detail");
    });
    HVRunner interactive;
    interactive.prepareHVLJob("job");
    interactive.execute();
    interactive.displayAllMessages(true, true);
    EXPECT_TRUE(journal(Kind::Error).empty());
    HVRunner runner(&procedure);
    runner.prepareHVLJob("job");
    runner.execute();
    runner.displayAllMessages(true, true);
    EXPECT_EQ(texts(Kind::Error), (Names{"a warning", "the error"}));
}

} // namespace
