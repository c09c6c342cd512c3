#include <limits>

#include "CFAppHost.h"
#include "EngineException.h"
#include "HostConversions.h"
#include "support/HostScopes.h"
#include "tcm/ReplayFixture.h"

// What influences a series, and what there is to model in a dataset.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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

/// A viewer on the real engine.
class Gating : public JobTest
{
protected:
    void SetUp() override
    {
        JobTest::SetUp();
        viewer.emplace();
    }
    void TearDown() override
    {
        viewer.reset();
        JobTest::TearDown();
    }

    bool examine(LocallyUniqueID data, const std::string& file, const std::string& date,
                 const Names& fields, int maxValues)
    {
        return viewer->getGatingInfo(data, file, date, fields, maxValues, interval, model);
    }

    /// 101 months of two regions, in the host's encoding.
    static LocallyUniqueID months(const std::string& regionName)
    {
        std::vector<MemorySource::Row> cases;
        for (int month = 0; month < 101; ++month)
            cases.push_back({GetBaseDateNumber() + 86400.0 * month, month % 2 ? "north" : "south",
                             static_cast<double>(month)});
        return SvrDMDataset::Register(std::make_shared<MemorySource>(
            std::vector<VEXA_Variable>{numeric("day", kFormatDateYearFirst), text(regionName, 5),
                                       numeric("sales")},
            cases));
    }

    std::optional<HVInteractiveTSR> viewer;
    std::string interval = "before";
    std::string model = "before";
};

} // namespace

TEST_F(Impact, OfTheModelAloneIsOneJob)
{
    for (const int level : {1, 3}) {
        engine.clearCalls();
        ASSERT_TRUE(draw(kNoDataset, level));
        EXPECT_THAT(plainJobs(),
                    ElementsAre(settingLines(level, "T1") +
                                "OutputComponent:TCMOutputComponent(outputConf,inputCons,"
                                "outputCons)"));
        EXPECT_EQ(diagram, R"({"effects":[]})");
    }
}

TEST_F(Impact, OfADatasetReplaysThePreparation)
{
    ASSERT_TRUE(draw(dataset, 2));
    const Names run = plainJobs();
    ASSERT_EQ(run.size(), 4U);
    EXPECT_THAT(run[1], HasSubstr("reclassifyField(_,toTS)")) << "the settings tell of the time";
    EXPECT_EQ(run.back(),
              R"(val readerConf = {"filesystem":{"dataModel":"T7","locations":[{"path":"T6",)"
              R"("parser":{"name":"hvbf","config":{}}}]}})"
              "\nval rtsdpConf = {\"exportFutureFlag\":true}\n"
              "val rtsdpInConf = [{\"name\":\"JSON\",\"uri\":\"T5\"}]\n" +
                  settingLines(2, "T8") +
                  "read(readerConf)->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)"
                  "->OutputComponent:TCMOutputComponent(outputConf, inputCons, outputCons)");
    EXPECT_EQ(diagram, R"({"effects":[]})");
}

TEST_F(Impact, AsksForAnyArtifacts)
{
    const char* const artifacts = R"([{"name":"fit"},{"name":"outliers","target":[["a","b"]]}])";
    for (const LocallyUniqueID data : {kNoDataset, dataset}) {
        ASSERT_TRUE(viewer->getModelStatistics(data, modelPath, {"region"}, artifacts, diagram));
        EXPECT_THAT(plainJobs().back(), HasSubstr(std::string("val outputConf = {\"artifacts\":") +
                                                  artifacts + ",\"locale\":"));
        EXPECT_EQ(diagram, R"({"effects":[]})");
    }
    engine.clearCalls();
    EXPECT_FALSE(viewer->getModelStatistics(kNoDataset, modelPath, {}, "{", diagram));
    EXPECT_EQ(reason(), "The artifacts are not a JSON list.");
    EXPECT_TRUE(jobs().empty());
}

TEST_F(Impact, FailsWithTheJobOrWithoutAnAnswer)
{
    for (const LocallyUniqueID data : {kNoDataset, dataset}) {
        engine.clearCalls();
        failingJob = data == kNoDataset ? 1 : 5;
        EXPECT_FALSE(draw(data, 1));
        EXPECT_EQ(jobs().size(), failingJob);
        EXPECT_EQ(reason(), "IDtextdetail");
    }
    engine.setScript([](ScriptedJob& job) { job.listener().onSuccess(); });
    EXPECT_FALSE(draw(kNoDataset, 1));
    EXPECT_EQ(reason(), "");
    engine.throwAt("execute", Fault::Engine);
    EXPECT_FALSE(draw(kNoDataset, 1));
    EXPECT_EQ(reason(), "scripted");
    engine.throwAt("prepare", Fault::Engine);
    EXPECT_THROW(draw(kNoDataset, 1), EmbeddedHV::Exception);
    EXPECT_EQ(diagram, "before");
}

TEST_F(Gating, DescribesFieldsAndFindsTheInterval)
{
    const LocallyUniqueID data = months("region");
    struct GatingCase
    {
        const char* date;
        Names fields;
        int maxValues;
        std::vector<std::size_t> values; ///< how many each field lists
    };
    const GatingCase cases[] = {
        {"day", {"region", "sales"}, 10, {2, 101}}, // the limit is 105
        {"", {"sales"}, 100, {101}},
        {"", {"region"}, std::numeric_limits<int>::max(), {2}},
        {"day", {}, 100, {}},
    };
    for (const auto& [date, fields, maxValues, values] : cases) {
        SCOPED_TRACE(std::string(date) + " " + std::to_string(fields.size()));
        ASSERT_TRUE(examine(data, "", date, fields, maxValues));
        EXPECT_EQ(interval.empty(), date[0] == '\0');
        if (!interval.empty()) {
            EXPECT_THAT(interval, HasSubstr(R"("day")"));
        }
        ASSERT_EQ(model.empty(), fields.empty());
        const CFMetaData found = model.empty() ? CFMetaData() : CFMetaData(model);
        ASSERT_EQ(found.FieldCount(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(found.GetField(i)->GetName(), fields[i]);
            EXPECT_EQ(found.GetField(i)->GetValues().size(), values[i]);
        }
    }
    EXPECT_FALSE(examine(data, "", "", {}, 100));
    EXPECT_EQ(interval + model, "");
}

TEST_F(Gating, ReadsADataFileWithoutADataset)
{
    const std::string weather = std::string(std::getenv("HV_TEST_DATA")) + "/weather.csv";
    ASSERT_TRUE(examine(kNoDataset, weather, "date", {"weather"}, 100));
    EXPECT_NE(CFMetaData(model).GetField("weather"), nullptr);
    std::string id;
    std::string text;
    std::string detail;
    for (const char* missing : {"", "missing.sav"}) {
        EXPECT_FALSE(examine(kNoDataset, missing, "date", {"weather"}, 100));
        EXPECT_TRUE(viewer->hasError(id, text, detail));
        EXPECT_THAT(text,
                    HasSubstr(missing[0] == '\0' ? "Cannot read the selected file." : missing));
    }
    EXPECT_FALSE(examine(months("region"), "", "", {"no such field"}, 100));
    EXPECT_TRUE(viewer->hasError(id, text, detail));
    EXPECT_THAT(text, HasSubstr("no such field"));
}

TEST_F(Gating, TakesNamesAsTheHostSpellsThem)
{
    const ScopedCodePage latin("ISO-8859-1");
    viewer.emplace();
    ASSERT_TRUE(examine(months("gr\xF6\xDF"), "", "", {"gr\xF6\xDF"}, 100));
    EXPECT_NE(CFMetaData(model).GetField("größ"), nullptr);
}
