#include <cmath>

#include <nlohmann/json.hpp>

#include "components/ContainerFile.h"
#include "engine/EngineFixture.h"
#include "temporal/DocumentChecks.h"
#include "temporal/TrainingData.h"

using namespace EngineTest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using json = nlohmann::json;

namespace {

const std::string kPreparation = R"({
  "settings": {"dimFieldList": ["region", "year"], "metricFieldList": ["sales", "visits"],
               "dimValueLists": {"region": ["north", "south"], "year": [2001]}},
  "output": {"series": [{"id": "1-1-1", "name": ["north", 2001, "sales"]},
                        {"id": "1-1-2", "name": ["north", 2001, "visits"]},
                        {"id": "2-1-1", "name": ["south", 2001, "sales"]}]}
})";

class TrainJob : public EngineFixture
{
protected:
    TrainJob()
    {
        prepare(kPreparation);
        const Eigen::MatrixXd values = TemporalTest::noise(80, 3, 6);
        std::string csv = "$TimeIndex,1-1-1,1-1-2,2-1-1\n";
        for (Eigen::Index t = 0; t < 80; ++t) {
            csv += std::to_string(t);
            for (Eigen::Index i = 0; i < 3; ++i)
                csv += "," + std::to_string(i == 1 && t > 0 ? values(t, 1) + values(t - 1, 0)
                                                            : values(t, i));
            csv += "\n";
        }
        write("in.csv", csv);
    }
    void prepare(const std::string& document) const
    {
        EmbeddedHV::ContainerFile file(path("tsdp.zip"), "test");
        file.write({{"TSDPOutput.json", document}});
        file.commit();
    }
    RecordingListener train(const std::string& configuration, const Setup& setup = {})
    {
        return run(readCsv("in.csv") + " -> tcm:train(" + configuration +
                       R"(, [{"name": "P", "uri": "$DIR/tsdp.zip"}],
                          [{"name": "M", "uri": "$DIR/m.tcm"}]))",
                   setup);
    }
};

TEST_F(TrainJob, WritesTheModelFile)
{
    const RecordingListener listener = succeeded(train(R"({"lags": 1, "maxPredictor": 3})"));
    ASSERT_EQ(listener.messages.size(), 1U);
    EXPECT_THAT(listener.messages[0].second, HasSubstr("maxPredictor"));
    EXPECT_THAT(listener.progress, testing::SizeIs(testing::Ge(5))) << "one of each series";
    EXPECT_EQ(member("m.tcm", "TSDPOutput.json"), kPreparation);
    TemporalTest::expectValid(HV_SCHEMAS "/tcm-model.schema.json", "TCMModel.json",
                              member("m.tcm", "TCMModel.json"));
    TemporalTest::expectValid(HV_SCHEMAS "/tcm-graph.schema.json", "TCMGraph.json",
                              member("m.tcm", "TCMGraph.json"));
    const json network = json::parse(member("m.tcm", "TCMGraph.json"));
    const json& edges = network["targets"][1]["predictors"];
    ASSERT_EQ(edges.size(), 2U);
    EXPECT_EQ(edges[1]["series"], "1-1-1");
    EXPECT_EQ(edges[1]["name"], json({"north", "2001", "sales"}));
    EXPECT_EQ(edges[1]["lag"], 1);
    EXPECT_EQ(edges[1]["sign"], 1);
    const std::string statistics = member("m.tcm", "StatXML.xml");
    EXPECT_THAT(statistics, HasSubstr("<DataModel>"));
    EXPECT_THAT(statistics, HasSubstr("<Value value=\"2\" label=\"south\""));
    EXPECT_THAT(statistics, HasSubstr("<BaseField name=\"year\" storage=\"integer\""));
    EXPECT_THAT(statistics, HasSubstr("<Field name=\"metricField\" storage=\"integer\""));
}

TEST_F(TrainJob, SettingsNameSeries)
{
    succeeded(
        train(R"({"lags": 1, "targets": ["sales"], "candidates": [["north", "2001", "visits"]],
                        "forced": [{"predictor": "visits", "target": ["south", 2001, "sales"]}]})"));
    const json model = json::parse(member("m.tcm", "TCMModel.json"));
    ASSERT_EQ(model["equations"].size(), 2U);
    EXPECT_EQ(model["equations"][1]["groups"][1]["series"], "1-1-2");
    EXPECT_EQ(model["equations"][1]["groups"][1]["forced"], true);
    EXPECT_EQ(model["series"][1]["candidate"], true);
    EXPECT_EQ(model["series"][0]["candidate"], false);
    EXPECT_EQ(model["autoregressions"].size(), 3U);
}

TEST_F(TrainJob, SenselessSettingsAreRefused)
{
    const std::pair<const char*, const char*> cases[] = {
        {R"({"lags": 0})", "\"lags\" is 0, not a number from 1 to 1000"},
        {R"({"lags": 1, "maxLag": 2})", "\"maxLag\" cannot be combined with \"lags\""},
        {R"({"lags": 40})", "equations with 40 lags need at least 122"},
        {R"({"maxPredictors": -1})", "\"maxPredictors\" is -1"},
        {R"({"criterion": "HQ"})", "\"criterion\" is \"HQ\", not BIC, EBIC or AIC"},
        {R"({"outlierLevel": 1})", "\"outlierLevel\" is not a number between 0 and 1"},
        {R"({"targets": "sales"})", "\"targets\" must be a list"},
        {R"({"targets": ["sale"]})", "HVETC0024E tcm:train: the setting \"targets[0]\" names "
                                     "\"sale\", which is not a metric of the input"},
        {R"({"both": [["north", 2002, "sales"]]})",
         "\"both[0]\" names \"2002\", which is not a value of \"year\""},
        {R"({"targets": [5]})", "\"targets[0]\" is neither a metric nor a list"},
        {R"({"targets": []})", "no series can be a target"},
        {R"({"forced": [{"target": "sales"}]})", "\"forced[0].predictor\" is missing"},
        {R"({"forced": [{"predictor": "visits"}], "forbidden": [{"predictor": "visits"}]})",
         "\"forbidden\" names a pair that is forced as well"},
    };
    for (const auto& [configuration, error] : cases) {
        EXPECT_THAT(train(configuration).fault(), HasSubstr(error));
        EXPECT_THAT(files(), ElementsAre("in.csv", "tsdp.zip"));
    }
}

TEST_F(TrainJob, InputsThatAreNotPreparedAreRefused)
{
    const std::pair<const char*, const char*> documents[] = {
        {"[]", "HVETC0022E"},
        {R"({"settings": {}, "output": {}})", "/output has no member \"series\""},
        {R"({"settings": {"metricFieldList": []}, "output": {"series": []}})",
         "does not know the series \"1-1-1\", which the records have"},
    };
    for (const auto& [document, error] : documents) {
        prepare(document);
        EXPECT_THAT(train("{}").fault(), HasSubstr(error));
    }
    prepare(kPreparation);
    const std::pair<const char*, const char*> records[] = {
        {"a,1-1-1\n1,0.5\n", "the input has no integer field \"$TimeIndex\""},
        {"$TimeIndex,1-1-1\n0,0.5\n2,0.5\n", "record 2 of the input is not that of the next point"},
        {"$TimeIndex,1-1-1\n3,0.5\n4,0.5\n", "the first point of time has the number 3, not 0"},
        {"$TimeIndex,1-1-1\n0,0.5\n", "equations with 1 lag need at least 5"},
        {"$TimeIndex\n0\n", "the records have no series"},
    };
    for (const auto& [csv, error] : records) {
        write("in.csv", csv);
        EXPECT_THAT(train("{}").fault(), HasSubstr(error));
        EXPECT_THAT(files(), ElementsAre("in.csv", "tsdp.zip"));
    }
}

} // namespace
