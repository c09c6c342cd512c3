#include "EngineException.h"
#include "tcm/ReplayFixture.h"

// What influences a series, and other statistics of a model: the jobs that ask.

namespace {

class Impact : public Replay
{
protected:
    bool draw(LocallyUniqueID data, int level)
    {
        return viewer->getImpactDiagram(data, modelPath, "sales", {"region"}, {"north"}, true,
                                        level, diagram);
    }

    std::string diagram = "before";
};

} // namespace

TEST_F(Impact, AsksForAnyArtifacts)
{
    const char* const artifacts = R"([{"name":"fit"},{"name":"outliers","target":[["a","b"]]}])";
    for (const LocallyUniqueID data : {kNoDataset, dataset}) {
        ASSERT_TRUE(viewer->getModelStatistics(data, modelPath, {"region"}, artifacts, diagram));
        EXPECT_THAT(plainJobs().back(),
                    testing::HasSubstr(std::string("val outputConf = {\"artifacts\":") + artifacts +
                                       ",\"locale\":"));
    }
    engine.clearCalls();
    EXPECT_FALSE(viewer->getModelStatistics(kNoDataset, modelPath, {}, "{", diagram));
    EXPECT_EQ(reason(), "The artifacts are not a JSON list.");
    EXPECT_TRUE(jobs().empty());
    EXPECT_TRUE(viewer->getModelStatistics(kNoDataset, modelPath, {}, "[]", diagram));
    EXPECT_EQ(reason(), "") << "of the request before";
}

TEST_F(Impact, FailsWithTheJobOrWithoutAnAnswer)
{
    for (failingJob = 1; failingJob <= 5; failingJob += 4) {
        engine.clearCalls();
        EXPECT_FALSE(draw(failingJob == 1 ? kNoDataset : dataset, 1));
        EXPECT_EQ(jobs().size(), failingJob);
        EXPECT_EQ(reason(), "IDtextdetail");
    }
    engine.setScript([](ScriptedJob& job) { job.listener().onSuccess(); });
    EXPECT_FALSE(draw(kNoDataset, 1));
    EXPECT_EQ(reason(), "");
    engine.throwAt("prepare", Fault::Engine);
    EXPECT_THROW(draw(kNoDataset, 1), EmbeddedHV::Exception);
    EXPECT_EQ(diagram, "before");
}
