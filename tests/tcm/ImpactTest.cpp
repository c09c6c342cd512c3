#include "CFAppHost.h"
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

    static std::string settingLines(int level, const char* file)
    {
        const std::string half =
            R"(","target":[["north","sales"]],"level":)" + std::to_string(level) + "}";
        return R"(val outputConf = {"artifacts":[{"name":"interpretation.ImpactDiagramEffects)" +
               half + R"(,{"name":"interpretation.ImpactDiagramCauses)" + half + R"(],"locale":")" +
               CFAppHost::getInstance()->getLocale() +
               R"(","timeFormat":"hh:mm:ss","isEncoded":false})"
               "\nval inputCons = [{\"name\":\"TCM\",\"uri\":\"MODEL\"}]\n"
               R"(val outputCons = [{"export":true,"name":"tcmStatJson","uri":")" +
               file + "\"}]\n";
    }

    std::string diagram = "before";
};

} // namespace

TEST_F(Impact, AsksTheModelAloneOrWithPreparedData)
{
    ASSERT_TRUE(draw(kNoDataset, 3));
    EXPECT_EQ(plainJobs(), Names{settingLines(3, "T1") +
                                 "OutputComponent:TCMOutputComponent(outputConf,inputCons,"
                                 "outputCons)"});
    EXPECT_EQ(diagram, R"({"effects":[]})");
    engine.clearCalls();
    ASSERT_TRUE(draw(dataset, 1));
    const Names run = plainJobs();
    ASSERT_EQ(run.size(), 4U);
    EXPECT_THAT(run[1], testing::HasSubstr("reclassifyField(_,toTS)")) << "the time is a text";
    EXPECT_EQ(run.back(),
              R"(val readerConf = {"filesystem":{"dataModel":"T7","locations":[{"path":"T6",)"
              R"("parser":{"name":"hvbf","config":{}}}]}})"
              "\nval rtsdpConf = {\"exportFutureFlag\":true}\n"
              "val rtsdpInConf = [{\"name\":\"JSON\",\"uri\":\"T5\"}]\n" +
                  settingLines(1, "T8") +
                  "read(readerConf)->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)"
                  "->OutputComponent:TCMOutputComponent(outputConf, inputCons, outputCons)");
}

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
