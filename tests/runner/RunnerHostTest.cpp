#include "runner/RunnerFixture.h"

#include <tuple>

namespace {

using Kind = HostJournal::Kind;
using Names = std::vector<std::string>;
using RunnerHost = RunnerFixture;

TEST_F(RunnerHost, WeightAndSplitAreOffWhileTheRunnerLives)
{
    const std::tuple<std::int64_t, std::int64_t, bool, bool, Names> rows[] = {
        {1, 1, true, true, {}},
        {3, 2, false, true, {"DisableWeight"}},
        {3, 2, true, false, {"DisableSplit"}},
        {3, 2, false, false, {"DisableWeight", "DisableSplit"}},
        {3, 0, false, false, {"DisableWeight"}},
        {0, -1, false, false, {}},
    };
    for (const auto& [weight, split, supportsWeight, supportsSplit, notes] : rows) {
        HostJournal::instance().clear();
        pvGetCmnGlb()->weight = weight;
        pvGetCmnGlb()->split = split;
        source.SetSplitEndCheck(true);
        {
            HVRunner runner(&procedure);
            EXPECT_TRUE(runner.prepareActiveDS(source, supportsWeight, supportsSplit));
            EXPECT_EQ(pvGetCmnGlb()->weight, 0);
            EXPECT_EQ(pvGetCmnGlb()->split, 0);
            EXPECT_FALSE(source.SplitEndCheck());
            // The host may choose again meanwhile; only what was in force is given back.
            pvGetCmnGlb()->weight = 7;
            pvGetCmnGlb()->split = 7;
        }
        EXPECT_EQ(journalTexts(Kind::Note), notes);
        EXPECT_EQ(journalTexts(Kind::Error).size(), notes.size());
        EXPECT_EQ(pvGetCmnGlb()->weight, weight > 0 ? weight : 7);
        EXPECT_EQ(pvGetCmnGlb()->split, split > 0 ? split : 7);
    }
    expectedWeight = expectedSplit = 7;
    EXPECT_EQ(source.GetMeasurementLevel(0), MeasurementLevel::Scale);
}

TEST_F(RunnerHost, ASecondPreparationKeepsWhatTheFirstOneSaved)
{
    pvGetCmnGlb()->weight = 3;
    pvGetCmnGlb()->split = 2;
    {
        HVRunner runner(&procedure);
        runner.prepareActiveDS(source, true, true);
        pvGetCmnGlb()->split = 4; // the host turns on another one in between
        runner.prepareActiveDS(source, true, true);
        EXPECT_EQ(pvGetCmnGlb()->split, 0);
    }
    EXPECT_EQ(pvGetCmnGlb()->weight, 3);
    EXPECT_EQ(pvGetCmnGlb()->split, 4);
    expectedWeight = 3;
    expectedSplit = 4;
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
    EXPECT_TRUE(journalTexts(Kind::Note).empty());
    pvGetCmnGlb()->weight = 5;
    expectedWeight = 5;
}

TEST_F(RunnerHost, AdapterHoldsTheRunnersHandlerDuringAJob)
{
    HVRunner::InterruptHandler earlier(nullptr);
    GetAdapter()->setInterruptHandler(&earlier);
    VexaAdapter::InterruptHandler* during = nullptr;
    bool fails = false;
    engine.setScript([&](ScriptedJob&) {
        during = GetAdapter()->getInterruptHandler();
        if (fails)
            throw std::runtime_error("in the job");
    });
    HVRunner ofProcedure(&procedure);
    HVRunner ofDialog;
    for (HVRunner* runner : {&ofProcedure, &ofDialog}) {
        runner->prepareHVLJob("job");
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), &earlier);
        fails = false;
        runner->execute();
        EXPECT_EQ(during != &earlier, runner == &ofProcedure);
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), &earlier);
        fails = true;
        EXPECT_THROW(runner->execute(), std::runtime_error);
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), &earlier);
    }
    GetAdapter()->setInterruptHandler(nullptr);
}

} // namespace
