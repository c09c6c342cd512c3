#include "data/HVRawDataIterator.h"
#include "data/MemorySource.h"
#include "support/ZipReader.h"
#include "tcm/HVTemporalTraining.h"
#include "tcm/ViewerFixture.h"

// The training of a model: the job, and what happens to the model file.

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Training : public ViewerTest
{
protected:
    void SetUp() override
    {
        ViewerTest::SetUp();
        engine.setScript([this](ScriptedJob& scripted) { answer(scripted); });
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

    /// Trains successfully and returns the job's text, its files as PREPARATION and MODEL.
    std::string trainedJob()
    {
        EXPECT_TRUE(training->Train(path)) << failure();
        std::string text = training->GetHVLJob();
        for (const auto& [container, word] : {std::pair("JSON", "PREPARATION"), {"TCM", "MODEL"}}) {
            const std::string place = "file:///" + placeOf(text, container);
            for (std::size_t at = text.find(place); at != text.npos; at = text.find(place))
                text.replace(at, place.size(), word);
        }
        return text;
    }

    std::string failure() const
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
    std::string model = "new"; ///< in the file that the job writes; empty for no file
    std::string end = "success";
    int recordsRead = 0;

private:
    void answer(ScriptedJob& scripted)
    {
        recordsRead = scripted.pull("cases");
        scripted.message("W1", "a series was left out");
        if (!model.empty())
            putArchive(placeOf(jobs().back(), "TCM"), {{"StatXML.xml", model}});
        if (end == "error")
            scripted.listener().onError("ID", "text", "detail");
        else if (end == "cancel")
            scripted.listener().onCancel();
        else
            scripted.listener().onSuccess();
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
    EXPECT_EQ(trainedJob(),
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

TEST_F(Training, ReadsWhatAPieceOfJobTextReads)
{
    training.emplace(*runner, "read({\"dataSource\":\"known\"})");
    training->SetTimeField("a b");
    std::string job = trainedJob();
    EXPECT_THAT(job, HasSubstr("\nread({\"dataSource\":\"known\"})->tsdp:tsdp("));
    EXPECT_THAT(job, HasSubstr("val trainConf = {}\n"));
    ASSERT_TRUE(training->GenerateHVL(path, job));
    EXPECT_THAT(job, HasSubstr("/sales.tcm\"}]"));
    engine.clearCalls();
    training->SetTimeIsText(true);
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(failure(),
              "The time field \"a b\" cannot be converted: its name needs quotes in a job.");
    EXPECT_THAT(jobs(), IsEmpty());
}

TEST_F(Training, LeavesAWholeModelOrThePreviousOne)
{
    putArchive(path, {{"StatXML.xml", "old"}});
    const auto expectFailure = [this](const char* why) {
        EXPECT_FALSE(training->Train(path));
        EXPECT_THAT(failure(), HasSubstr(why));
        EXPECT_EQ(modelText(), "old");
    };
    end = "error";
    expectFailure("IDtextdetail");
    EXPECT_THAT(training->getMessages(), testing::ElementsAre("a series was left out"));
    end = "cancel";
    expectFailure("");
    EXPECT_EQ(failure(), "");
    end = "success";
    model.clear();
    expectFailure("sales.tcm\" cannot be written.");
    engine.throwAt("execute", Fault::Engine);
    expectFailure("scripted");
    engine.throwAt("execute", Fault::None);
    model = "new";
    EXPECT_TRUE(training->Train(path));
    EXPECT_EQ(recordsRead, 2) << "the rows are read from the first one again";
    EXPECT_EQ(failure(), "");
    EXPECT_EQ(modelText(), "new");
    std::filesystem::directory_iterator files(folder().path);
    EXPECT_EQ(std::distance(files, {}), 1) << "nothing unfinished is left";
}

TEST_F(Training, FailsBeforeTheJobWithoutAnInputOrAFolder)
{
    end = "error";
    EXPECT_FALSE(training->Train(path));
    EXPECT_FALSE(training->Train(folder().name("no such folder/sales.tcm")));
    EXPECT_THAT(failure(), HasSubstr("cannot be written.")) << "not the error of the job before";
    training.emplace(*runner, static_cast<HVRawDataIterator*>(nullptr));
    std::string job;
    EXPECT_FALSE(training->GenerateHVL(path, job));
    EXPECT_FALSE(training->Train(path));
    EXPECT_EQ(failure(), "There are no data to train the model on.");
    EXPECT_EQ(jobs().size(), 1U);
}
