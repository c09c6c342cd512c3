#include "data/HVRawDataIterator.h"
#include "data/MemorySource.h"
#include "support/ZipReader.h"
#include "tcm/HVTemporalTraining.h"
#include "tcm/ViewerFixture.h"

// The training of a model: the job that is composed, and what becomes of the model file.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Training : public ViewerTest
{
protected:
    void SetUp() override
    {
        ViewerTest::SetUp();
        engine.setScript([this](ScriptedJob& job) { answer(job); });
        rows.emplace(source, std::vector<int>{0, 1, 2}, std::vector<MeasurementLevel>(), true,
                     kWeightRound, true, nullptr);
        rows->SetName("cases");
        training.emplace(*runner, &*rows);
        path = folder().name("sales.tcm");
    }
    void TearDown() override
    {
        training.reset();
        ViewerTest::TearDown();
    }

    /// The job's text, its files as PREPARATION and MODEL.
    std::string job() const
    {
        std::string text = training->GetHVLJob();
        const auto hide = [&text](const std::string& container, const std::string& word) {
            const std::string place = placeOf(text, container);
            for (std::size_t at = text.find("file:///" + place); at != text.npos;
                 at = text.find("file:///" + place))
                text.replace(at, place.size() + 8, word);
        };
        hide("JSON", "PREPARATION");
        hide("TCM", "MODEL");
        return text;
    }

    std::string reason() const
    {
        std::string id;
        std::string text;
        std::string detail;
        return training->hasError(id, text, detail) ? id + text + detail : "";
    }

    std::string modelText() const
    {
        std::string text;
        ZipReader reader(path);
        return reader.GotoFile("StatXML.xml") && reader.ExportString(text) ? text : "";
    }

    MemorySource source{
        std::vector<VEXA_Variable>{text("month", 7), text("region", 5), numeric("sales")},
        std::vector<MemorySource::Row>{{"2020-01", "north", 5.0}, {"2020-02", "north", 6.0}}};
    std::optional<HVRawDataIterator> rows;
    std::optional<HVTemporalTraining> training;
    std::string path;
    std::string model = "new"; ///< what the job leaves; empty for no file
    std::string end = "success";
    int recordsRead = 0;

private:
    void answer(ScriptedJob& job)
    {
        recordsRead = job.pull("cases");
        job.message("W1", "a series was left out");
        const std::string file = placeOf(jobs().back(), "TCM");
        if (!model.empty())
            putArchive(file, {{"StatXML.xml", model}});
        if (end == "error")
            job.listener().onError("ID", "text", "detail");
        else if (end == "cancel")
            job.listener().onCancel();
        else
            job.listener().onSuccess();
    }
};

} // namespace

TEST_F(Training, ComposesOneJobFromAllSettings)
{
    training->SetTimeField("day");
    training->SetTimeInterval("minute", 15);
    training->SetWorkingDays({1, 5});
    training->SetWorkingHours(8, 18);
    training->SetDimensions({"region"});
    training->SetMetrics({"sales", "visits"});
    training->SetAggregation("mean");
    training->SetAggregation("visits", "sum");
    training->SetMissingValues("last", 0.5);
    training->AddTarget({"north", "sales"});
    training->AddPredictor({"visits"});
    training->AddTargetAndPredictor({"south", "sales"});
    training->ForcePredictor({"north", "sales"}, {"north", "visits"});
    training->ForbidPredictor({}, {"south", "visits"});
    training->SetMaxLag(9);
    training->SetLags(3);
    training->SetCriterion("AIC");
    training->SetMaxPredictors(2);
    training->SetOutlierLevel(0.75);
    ASSERT_TRUE(training->Train(path));
    EXPECT_EQ(job(),
              R"(val tsdpConf = {"dimFieldList":["region"],"metricFieldList":["sales","visits"],)"
              R"("dateTimeField":"day","timeInterval":{"unit":"minute","increment":15,)"
              R"("workingDays":[1,5],"workingHours":{"from":8,"to":18}},"aggregation":)"
              R"({"default":"mean","fields":{"visits":"sum"}},)"
              R"("missingValues":{"method":"last","maxShare":0.5}})"
              "\n"
              R"(val tsdpOutCon = [{"export":true,"name":"JSON","uri":"PREPARATION"}])"
              "\n"
              R"(val trainConf = {"targets":[["north","sales"]],"candidates":["visits"],)"
              R"("both":[["south","sales"]],"forced":[{"target":["north","sales"],)"
              R"("predictor":["north","visits"]}],"forbidden":[{"predictor":["south","visits"]}],)"
              R"("lags":3,"criterion":"AIC","maxPredictors":2,"outlierLevel":0.75})"
              "\n"
              R"(val trainInCon = [{"name":"JSON","uri":"PREPARATION"}])"
              "\n"
              R"(val trainOutCon = [{"export":true,"name":"TCM","uri":"MODEL"}])"
              "\n"
              R"(read({"dataSource":"cases","readErrorThreshold":-1}))"
              "->tsdp:tsdp(tsdpConf,_,tsdpOutCon)->tcm:train(trainConf,trainInCon,trainOutCon)");
    EXPECT_EQ(recordsRead, 2);
}

TEST_F(Training, ReadsTimesAndInputsOfEachKind)
{
    training->SetCyclicFields({"year", "month"});
    ASSERT_TRUE(training->Train(path));
    EXPECT_THAT(job(), HasSubstr(R"("dateTimeField":"","cyclicFieldList":["year","month"]})"));
    training->SetCaseCountTime();
    ASSERT_TRUE(training->Train(path));
    EXPECT_THAT(job(), HasSubstr(R"("cyclicFieldList":["$casecount"]})"));
    EXPECT_THAT(job(), HasSubstr("val trainConf = {}\n"));
    training->SetTimeField("month");
    ASSERT_TRUE(training->Train(path));
    EXPECT_THAT(job(), HasSubstr(R"("dateTimeField":"month"})"));
    EXPECT_THAT(job(), HasSubstr("val toTS = ctx => x => (\"month\", toTimestamp(x.month,"));
    EXPECT_THAT(job(), HasSubstr(")->reclassifyField(_,toTS)->tsdp:tsdp("));
    EXPECT_EQ(recordsRead, 2) << "the rows are read from the first one on";

    training.emplace(*runner, "read({\"dataSource\":\"known\"})");
    training->SetTimeField("a b");
    ASSERT_TRUE(training->Train(path));
    EXPECT_THAT(job(), HasSubstr("\nread({\"dataSource\":\"known\"})->tsdp:tsdp("));
    std::string composed;
    ASSERT_TRUE(training->GenerateHVL(path, composed));
    EXPECT_THAT(composed, HasSubstr("/sales.tcm\"}]"));
    engine.clearCalls();
    training->SetTimeIsText(true);
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(reason(),
              "The time field \"a b\" cannot be converted: its name needs quotes in a job.");
    EXPECT_THAT(jobs(), IsEmpty());
}

TEST_F(Training, LeavesAWholeModelOrTheOneThatWasThere)
{
    putArchive(path, {{"StatXML.xml", "old"}});
    for (const char* how : {"error", "cancel"}) {
        end = how;
        EXPECT_FALSE(training->Train(path)) << how;
        EXPECT_EQ(modelText(), "old") << how;
        EXPECT_EQ(reason(), end == "error" ? "IDtextdetail" : "");
        EXPECT_THAT(training->getMessages(), ElementsAre("a series was left out"));
    }
    end = "success";
    model.clear();
    EXPECT_FALSE(training->Train(path));
    EXPECT_THAT(reason(), HasSubstr("sales.tcm\" cannot be written."));
    EXPECT_EQ(modelText(), "old");
    engine.throwAt("execute", Fault::Engine);
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(reason(), "scripted");
    engine.throwAt("execute", Fault::None);
    model = "new";
    EXPECT_TRUE(training->Train(path));
    EXPECT_EQ(reason(), "");
    EXPECT_EQ(modelText(), "new");
    std::filesystem::directory_iterator files(folder().path);
    EXPECT_EQ(std::distance(files, {}), 1) << "nothing unfinished is left";
}

TEST_F(Training, RefusesWhatNoJobCanDo)
{
    EXPECT_FALSE(training->Train(folder().name("no such folder/sales.tcm")));
    EXPECT_THAT(reason(), HasSubstr("cannot be written."));
    training.emplace(*runner, static_cast<HVRawDataIterator*>(nullptr));
    std::string composed;
    EXPECT_FALSE(training->GenerateHVL(path, composed));
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(reason(), "There are no data to train the model on.");
    EXPECT_THAT(jobs(), IsEmpty());
    training.emplace(*runner, &*rows);
    runner->cancelExecution();
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(reason(), "");
    EXPECT_EQ(modelText(), "");
}
