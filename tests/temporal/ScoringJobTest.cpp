#include "engine/EngineFixture.h"
#include "temporal/ScoringSamples.h"

#include "components/ContainerFile.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/Preparation.h"
#include "runtime/DataModel.h"

using namespace EngineTest;
using namespace ScoringTest;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace {

/// Prepared records; a third series is not the model's.
constexpr const char* kPrepared =
    "$TimeIndex,2,3,1\n0,10.5,1.5,4.5\n1,20.5,1.5,2.5\n2,30.5,1.5,6.5\n";

/// A document of preparation with one dimension of each storage.
constexpr const char* kDimensions = R"({
  "settings": {"dimFieldList": ["region", "year", "size"], "metricFieldList": ["x", "y"],
               "dateTimeField": "day", "cyclicFieldList": [],
               "dimValueLists": {"region": ["north", "07"], "year": [7, 8], "size": [1.0, 2.5]}},
  "output": {"timeVariable": [], "series": [
    {"id": "1-1-1-1", "name": ["north", 7, 1.0, "x"]},
    {"id": "2-2-2-2", "name": ["07", 8, 2.5, "y"]}]}})";
constexpr const char* kPlain = R"({
  "settings": {"dimFieldList": [""], "metricFieldList": ["x", "y"], "dateTimeField": "day",
               "cyclicFieldList": [], "timeInterval": {"unit": "day", "increment": 1},
               "start": "2024-01-01", "seriesList": ["1", "2"]},
  "output": {"timeVariable": [], "points": 3, "dimensions": [],
             "timeFields": [{"name": "day", "storage": "date"}],
             "series": [{"id": "1", "name": ["x"]}, {"id": "2", "name": ["y"]}]}})";

class ScoringJobTest : public EngineFixture
{
protected:
    void writeModel(const EmbeddedHV::TcmModel& model, const char* preparation = kPlain)
    {
        const EmbeddedHV::Preparation read = EmbeddedHV::preparationOf(preparation, {"test"});
        EmbeddedHV::ContainerFile file(path("m.tcm"), "test");
        file.write(EmbeddedHV::modelMembers(full(model), read.document,
                                            EmbeddedHV::modelStatistics(read.fields)));
        file.commit();
    }
    static std::string step(const std::string& name, const std::string& settings)
    {
        return name + "({" + settings + R"(}, [{"name": "M", "uri": "$DIR/m.tcm"}], _))";
    }
    static std::string listed(const std::string& series)
    {
        return R"("fieldSetting": {"fieldNameList": {"seriesIDList": [)" + series + "]}}";
    }
    static std::string job(const std::string& step)
    {
        return readCsv("in.csv") + " -> " + step + " -> " + writeCsv("out.csv");
    }
    /// What the step makes of the prepared records, or its fault.
    std::string result(const std::string& step)
    {
        const RecordingListener listener = run(job(step));
        return listener.ending == "success" ? read("out.csv") : listener.fault();
    }

private:
    /// A residual for each point, as a file has.
    static EmbeddedHV::TcmModel full(EmbeddedHV::TcmModel model)
    {
        for (auto* equations : {&model.equations, &model.autoregressions})
            for (EmbeddedHV::SeriesEquation& equation : *equations)
                equation.residuals.resize(static_cast<std::size_t>(model.trainingPoints), kNone);
        return model;
    }
};

TEST_F(ScoringJobTest, SettingsSayWhatIsGiven)
{
    writeModel(twoSeries());
    write("in.csv", kPrepared);
    const std::string x = listed(R"(["x"])");
    const std::string y = listed(R"(["y"])");
    const std::string all = R"("fieldSetting": {"fieldType": "ALL_SERIES"})";
    const auto lastOf = [&](const std::string& name, const std::string& settings) {
        const std::string csv = result(step(name, settings));
        return csv.substr(0, csv.find('\n')) + ": " +
               csv.substr(csv.rfind('\n', csv.size() - 2) + 1);
    };
    const std::string score = "$TimeIndex,$FutureFlag,";
    const struct
    {
        const char* step;
        std::string settings;
        std::string result; ///< the header and the begin of the last record
    } cases[] = {
        {"tcm:ar", x + R"(, "forecast": {"doForecast": false, "forecastSpan": 2})",
         "1_predicted,1_lower,1_upper: 2,0,2.25,"},
        {"tcm:ar", x + R"(, "forecast": {"forecastSpan": 0}, "fit": {"doFit": false})",
         "1_predicted,1_lower,1_upper: 2,0,,,"},
        {"tcm:ar", all, "1_predicted,1_lower,1_upper,2_predicted,2_lower,2_upper: 2,0,2.25,"},
        {"tcm:ar", R"("fieldSetting": {"fieldType": "ALL_TARGETS"})",
         "2_predicted,2_lower,2_upper: 2,0,14.25,"},
        {"tcm:score", all, "1_predicted,1_lower,1_upper,2_predicted,2_lower,2_upper: 2,0,2.25,"},
        {"tcm:score", R"("fieldSetting": {"fieldType": "ALL_TARGETS"})",
         "2_predicted,2_lower,2_upper: 2,0,13.2"},
        {"tcm:score", y + R"(, "forecast": {"forecastSpan": 2}, "scenario": [
            {"series": ["x"], "ahead": 1, "value": 9.25}, {"series": ["y"], "change": -1}])",
         "2_predicted,2_lower,2_upper: 4,1,0.0,0.0,0.0"},
        {"tcm:score", y + R"(, "confidenceLevel": 1.0e-9)",
         "2_predicted,2_lower,2_upper: 2,0,13.2"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(lastOf(each.step, each.settings), testing::StartsWith(score + each.result));
    const RecordingListener slip =
        succeeded(run(job(step("tcm:score", y + R"(, "fit": {"dofit": true}, "senario": [])"))));
    EXPECT_THAT(slip.messages, Contains(Pair("HVEPL0015W", HasSubstr("\"fit.dofit\""))));
    EXPECT_THAT(slip.messages, Contains(Pair("HVEPL0015W", HasSubstr("\"scenario\"?"))));
    // A refit of the autoregression of the target: two points and two coefficients.
    EXPECT_THAT(result(step("tcm:ar", y + R"(, "fit": {"doFit": true, "refit": true})")),
                HasSubstr("HVETC0043E tcm:ar: the equation of the series \"y\""));
}

TEST_F(ScoringJobTest, SeriesAreFoundByTheirValues)
{
    EmbeddedHV::TcmModel model = twoSeries();
    model.series[0] = {"1-1-1-1", {"north", "7", "1", "x"}, false, true};
    model.series[1] = {"2-2-2-2", {"07", "8", "2.5", "y"}, true, true};
    writeModel(model, kDimensions);
    write("in.csv", "$TimeIndex,1-1-1-1,2-2-2-2\n0,4.5,10.5\n1,2.5,20.5\n");
    const std::string good = "$TimeIndex,$FutureFlag,";
    const struct
    {
        const char* name;
        std::string result;
    } cases[] = {
        {R"(["north", "7", "1", "x"])", good + "1-1-1-1_predicted"},
        {R"(["north", "007", "1.00", "x"])", good + "1-1-1-1_predicted"},
        {R"(["07", "8", "25e-1", "y"])", good + "2-2-2-2_predicted"},
        {R"(["7", "8", "2.5", "y"])",
         "HVETC0024E tcm:ar: the setting \"fieldSetting.fieldNameList.seriesIDList[0]\" names "
         "\"7\", which is not a value of \"region\" in the model; did you mean \"07\"?"},
        {R"(["nort", "7", "1", "x"])", "did you mean \"north\"?"},
        {R"(["north", "7x", "1", "x"])", "\"7x\", which is not a value of \"year\""},
        {R"(["north", "", "1", "x"])", "\"\", which is not a value of \"year\""},
        {R"(["north", "7", "1", "X"])", "\"X\", which is not a metric of the model"},
        {R"(["north", "8", "1", "x"])",
         "names the series \"north, 8, 1, x\", which the model does not have"},
        {R"(["north", "x"])", "must have 4 texts (the value of \"region\", the value of \"year\", "
                              "the value of \"size\", the metric), not 2"},
        {R"(["north", 7, "1", "x"])", good + "1-1-1-1_predicted"},
        {R"(["north", [], "1", "x"])", "seriesIDList[0][1]\" must be a text"},
        {R"("x")", "is not a list of texts"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(result(step("tcm:ar", listed(each.name))), HasSubstr(each.result));
    EXPECT_THAT(run(job(step("tcm:ar", listed(R"(["north", "8", "1", "x"])")))).errorDetail,
                HasSubstr(R"("series":["north","8","1","x"])"));
}

TEST_F(ScoringJobTest, WhatMakesNoSenseIsRefused)
{
    writeModel(twoSeries());
    write("in.csv", kPrepared);
    write("text.tcm", "no archive");
    const std::string y = listed(R"(["y"])");
    const struct
    {
        std::string settings;
        const char* fault;
    } cases[] = {
        {"", "\"fieldSetting\" is missing"},
        {listed(""), "\"fieldSetting.fieldNameList.seriesIDList\" is empty"},
        {listed(R"(["y"], ["y"])"), "seriesIDList[1]\" names the series \"y\" a second time"},
        {listed(R"(["x"])"), "\"x\", which is not a target of the model; tcm:ar predicts it"},
        {R"("fieldSetting": {"fieldType": "ALL_TARGET"})", "did you mean \"ALL_TARGETS\"?"},
        {y + R"(, "forecast": {"doForecast": true})", "\"forecast.forecastSpan\" is missing"},
        {y + R"(, "forecast": {"forecastSpan": -1})", "is -1, not from 0 to 100000"},
        {y + R"(, "forecast": {"forecastSpan": 99999999999999999999})", "not from 0 to 100000"},
        {y + R"(, "confidenceLevel": 95)", "\"confidenceLevel\" is not between 0 and 1"},
        {y + R"(, "confidenceLevel": 0)", "\"confidenceLevel\" is not between 0 and 1"},
        {y + R"(, "confidenceLevel": 0.99999999999999999)", "is not between 0 and 1"},
        {y + R"(, "scenario": [{"series": ["x"], "ahead": 1}])",
         "\"scenario[0].value\" is missing"},
        {y + R"(, "scenario": [{"series": ["x"], "value": 1, "change": 1}])", "give one of them"},
        {y + R"(, "scenario": [{"series": ["x"], "value": 1, "ahead": 1, "timeIndex": 3}])",
         "give one of them"},
        {y + R"(, "scenario": [{"series": ["z"], "value": 1}])",
         "\"scenario[0].series\" names \"z\", which is not a metric of the model"},
        {y + R"(, "scenario": [{"series": ["x"], "ahead": 1, "value": 1}])",
         "HVETC0044E tcm:score: the scenario sets the series \"x\" at point 1 of the forecast, but "
         "the forecast has no point"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(result(step("tcm:score", each.settings)), HasSubstr(each.fault));

    const std::string settings = "tcm:score({" + y + "}, ";
    EXPECT_THAT(result(settings + "_, _)"), HasSubstr("no input container is given"));
    EXPECT_THAT(result(settings + "[], _)"), HasSubstr("0 input containers are given"));
    EXPECT_THAT(result(settings + R"([{"name": "M", "uri": "$DIR/text.tcm"}], _))"),
                HasSubstr("is not a zip archive"));
    write("in.csv", "$TimeIndex,1\n0,4.5\n");
    EXPECT_THAT(result(step("tcm:score", y)),
                HasSubstr("HVETC0041E tcm:score: the records have no field \"2\""));
    write("in.csv", "1,2\n4.5,1.5\n");
    EXPECT_THAT(result(step("tcm:score", y)), HasSubstr("no integer field \"$TimeIndex\""));
    EXPECT_THAT(files(), ElementsAre("in.csv", "m.tcm", "text.tcm"));
}

TEST_F(ScoringJobTest, CapabilitiesAreDocumentsOfTheModel)
{
    writeModel(twoSeries());
    const std::string containers =
        R"([{"name": "InputPMML", "uri": "$DIR/m.tcm"}],
           [{"export": true, "name": "ModelCapabilities", "uri": "$DIR/c.zip"}]))";
    succeeded(run(R"(scoring:scoring({"isModelCapabilities": true}, )" + containers));
    const auto namesIn = [&](const char* entry) {
        std::vector<std::string> names;
        for (const CFField& field :
             EmbeddedHV::fieldsOfDataModel(member("c.zip", entry), "the model", "id"))
            names.push_back(field.GetName());
        return names;
    };
    EXPECT_THAT(namesIn("ScoreInputDataModel.xml"), ElementsAre("day", "x", "y"));
    EXPECT_THAT(namesIn("ScoreOutputDataModel.xml"),
                ElementsAre("day", "$FutureFlag", "y", "y_predicted", "y_lower", "y_upper"));
    EXPECT_THAT(member("c.zip", "ScoreModelProp.xml"),
                AllOf(HasSubstr(R"(name="modelType" value="temporalCausal")"),
                      HasSubstr(R"(name="targetCount" value="1")"),
                      HasSubstr(R"(name="outlierLevel" value="0.99")")));

    std::filesystem::remove(path("c.zip"));
    EXPECT_THAT(run(R"(scoring:scoring({"modelName": "m"}, )" + containers).fault(),
                HasSubstr("HVEPL0013E scoring:scoring: only the capabilities"));
    EXPECT_THAT(run(R"(scoring:scoring({"isModelCapabilities": true}, [{"name": "M",
                       "uri": "$DIR/none.tcm"}], [{"name": "C", "uri": "$DIR/c.zip"}]))")
                    .fault(),
                HasSubstr("HVEIO0001E scoring:scoring"));
    EXPECT_THAT(files(), ElementsAre("m.tcm"));
}

TEST_F(ScoringJobTest, ScoringIsCancelledAtOnceAndLeavesNothing)
{
    // Minutes of work: a random walk, and a scenario at the end of a long forecast.
    EmbeddedHV::TcmModel model = twoSeries();
    model.autoregressions[0] = equation(0, 0, {{0, 1, 1}}, 1, {kNone, 1, 1});
    writeModel(model);
    write("in.csv", kPrepared);
    RecordingListener listener;
    const auto time = cancelAfter(
        std::chrono::milliseconds(300),
        job(step("tcm:ar", listed(R"(["x"])") + R"(, "forecast": {"forecastSpan": 100000},
            "scenario": [{"series": ["x"], "ahead": 100000, "value": 1}])")),
        listener);
    EXPECT_EQ(listener.ending, "cancel");
    EXPECT_LT(time, std::chrono::seconds(1));
    EXPECT_THAT(files(), ElementsAre("in.csv", "m.tcm"));
}

} // namespace
